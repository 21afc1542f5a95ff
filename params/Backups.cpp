#include "Backups.h"

#include "AppPaths.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace Backups
{

namespace
{

// The part of a name after the model: "20240131-235959.cfg" sorts by time.
QString timeKey(const QString &name)
{
    return name.section(QLatin1Char('-'), 1);
}

} // namespace

QString fileName(const QString &model, const QDateTime &when)
{
    return model + QLatin1Char('-') + when.toString(QStringLiteral("yyyyMMdd-HHmmss")) + QStringLiteral(".cfg");
}

QStringList surplus(const QStringList &names, int keep)
{
    QStringList sorted = names;
    std::stable_sort(sorted.begin(), sorted.end(),
        [](const QString &a, const QString &b) { return timeKey(a) < timeKey(b); });
    return sorted.mid(0, qMax(0, sorted.size() - keep));
}

QString save(const QString &model, const QString &text, const QDateTime &when, QString *error)
{
    const QString dirPath = AppPaths::writableFile(QStringLiteral("/backup"));
    QDir dir(dirPath);
    if (!dir.mkpath(QStringLiteral("."))) {
        *error = QStringLiteral("cannot create %1").arg(dirPath);
        return QString();
    }
    const QString path = dir.filePath(fileName(model, when));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return QString();
    }
    const QByteArray bytes = text.toLocal8Bit();
    if (file.write(bytes) != bytes.size()) {
        *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return QString();
    }
    file.close();
    const QStringList names = dir.entryList({ QStringLiteral("*-*-*.cfg") }, QDir::Files);
    for (const QString &old : surplus(names))
        dir.remove(old);
    return path;
}

} // namespace Backups
