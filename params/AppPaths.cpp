#include "AppPaths.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {
QString &overrideDir()
{
    static QString dir;
    return dir;
}

// The data folder of an installed program, relative to its bin/.
const char kInstalledData[] = "/../share/quillmark";

bool isWritableDir(const QString &path)
{
    const QFileInfo info(path);
    return info.isDir() && info.isWritable();
}
} // namespace

namespace AppPaths {

QString dataDirFor(const QString &executableDir, const std::function<bool(const QString &)> &isDir)
{
    // A build tree has config/ beside the program; an installed tree has it
    // under share/quillmark.
    if (isDir(executableDir + QStringLiteral("/config")))
        return executableDir;
    const QString installed = QDir::cleanPath(executableDir + QLatin1String(kInstalledData));
    if (isDir(installed + QStringLiteral("/config")))
        return installed;
    return executableDir;
}

QString writableDirFor(const QString &dataDir, const QString &userDataDir,
                       const std::function<bool(const QString &)> &isWritableDir)
{
    if (isWritableDir(dataDir) && isWritableDir(dataDir + QStringLiteral("/config")))
        return dataDir;
    return userDataDir;
}

QString appDir()
{
    if (!overrideDir().isEmpty())
        return overrideDir();
    const QString fromEnv = qEnvironmentVariable("QUILLMARK_APP_DIR");
    if (!fromEnv.isEmpty())
        return fromEnv;
    // Pictures are looked up on every paint: decide once per executable.
    static QString executableDir;
    static QString dataDir;
    const QString here = QCoreApplication::applicationDirPath();
    if (here != executableDir) {
        executableDir = here;
        dataDir = dataDirFor(here, [](const QString &path) { return QFileInfo(path).isDir(); });
    }
    return dataDir;
}

void setAppDir(const QString &dir)
{
    overrideDir() = dir;
}

QString file(const QString &relative)
{
    return appDir() + relative;
}

QString writableDir()
{
    const QString userData = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/quillmark");
    const QString dir = writableDirFor(appDir(), userData, isWritableDir);
    if (dir != appDir())
        QDir().mkpath(dir + QStringLiteral("/config"));
    return dir;
}

QString writableFile(const QString &relative)
{
    return writableDir() + relative;
}

QString userFile(const QString &relative)
{
    const QString own = writableFile(relative);
    return QFileInfo::exists(own) ? own : file(relative);
}

} // namespace AppPaths
