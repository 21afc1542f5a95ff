#include "AppPaths.h"

#include <QCoreApplication>

namespace {
QString &overrideDir()
{
    static QString dir;
    return dir;
}
} // namespace

namespace AppPaths {

QString appDir()
{
    if (!overrideDir().isEmpty())
        return overrideDir();
    const QString fromEnv = qEnvironmentVariable("QUILLMARK_APP_DIR");
    if (!fromEnv.isEmpty())
        return fromEnv;
    return QCoreApplication::applicationDirPath();
}

void setAppDir(const QString &dir)
{
    overrideDir() = dir;
}

QString file(const QString &relative)
{
    return appDir() + relative;
}

} // namespace AppPaths
