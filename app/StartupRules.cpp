#include "StartupRules.h"

namespace StartupRules {

QString guardKey(const QString &instanceName)
{
    return QStringLiteral("Quillmark") + QStringLiteral("RunGuardKey") + instanceName;
}

QString translationFile(const QString &localeName)
{
    return localeName == QLatin1String("zh_CN") ? QStringLiteral("/translations/chinese.qm")
                                                 : QStringLiteral("/translations/english.qm");
}

Placement placeWindow(const QRect &available)
{
    Placement p;
    if (available.width() > kWindowWidth && available.height() > kWindowHeight) {
        p.geometry = QRect(available.left() + (available.width() - kWindowWidth) / 2,
                           available.top() + (available.height() - kWindowHeight) / 2, kWindowWidth, kWindowHeight);
    } else {
        p.maximise = true;
    }
    return p;
}

} // namespace StartupRules
