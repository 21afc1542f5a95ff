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

QString commandLineAnswer(const QStringList &arguments, const QString &version)
{
    const QStringList options = arguments.mid(1);
    if (options.contains(QLatin1String("--help")) || options.contains(QLatin1String("-h"))) {
        return QStringLiteral(
            "Usage: quillmark [--no-reconnect]\n"
            "Configuration tool for the Alder, Birch, Cedar, Larch, Maple and Rowan transmitters\n"
            "and the Willow ground station, over the unit's serial port (115200 8N1).\n"
            "\n"
            "  --no-reconnect  leave the port closed when the unit goes away\n"
            "  -h, --help      print this help and exit\n"
            "  --version       print the version and exit\n"
            "\n"
            "The serial port is named in config/port.xml, for example\n"
            "  <config><port>/dev/ttyUSB0</port></config>\n"
            "the user's own copy in %1 first; the window also offers\n"
            "the ports present when the named one does not open.\n"
            "QUILLMARK_APP_DIR points the program at another application directory.\n")
            .arg(QStringLiteral("~/.local/share/quillmark/config/"));
    }
    if (options.contains(QLatin1String("--version")))
        return QStringLiteral("quillmark %1\n").arg(version);
    return QString();
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
