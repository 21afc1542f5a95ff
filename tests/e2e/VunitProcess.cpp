#include "VunitProcess.h"

#include "AppPaths.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

VunitProcess::VunitProcess(const QString &folder)
    : m_folder(folder)
    , m_linkPath(folder + QStringLiteral("/unit"))
    , m_recordPath(folder + QStringLiteral("/record.txt"))
{
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
    m_process.setProgram(QStringLiteral(QM_VUNIT_BIN));
}

VunitProcess::~VunitProcess()
{
    terminate();
}

bool VunitProcess::start(const QStringList &extra)
{
    m_process.setArguments(QStringList { QStringLiteral("--print-path"), QStringLiteral("--link"), m_linkPath,
                               QStringLiteral("--record"), m_recordPath }
        + extra);
    m_process.start();
    if (!m_process.waitForStarted(10000))
        return false;
    QDeadlineTimer deadline(20000);
    while (!m_process.canReadLine() && !deadline.hasExpired()) {
        if (!m_process.waitForReadyRead(int(qMax<qint64>(1, deadline.remainingTime()))))
            break;
    }
    m_ptyPath = QString::fromLocal8Bit(m_process.readLine()).trimmed();
    return m_ptyPath.startsWith(QLatin1String("/dev/"));
}

void VunitProcess::terminate()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(10000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}

QVector<VunitProcess::RecordLine> VunitProcess::record() const
{
    QVector<RecordLine> lines;
    QFile f(m_recordPath);
    if (!f.open(QIODevice::ReadOnly))
        return lines;
    for (const QByteArray &raw : f.readAll().split('\n')) {
        const QList<QByteArray> fields = raw.split(' ');
        if (fields.size() != 3)
            continue;
        RecordLine l;
        l.ms = fields.at(0).toLongLong();
        l.code = quint8(fields.at(1).toInt(nullptr, 16));
        l.payload = fields.at(2) == "-" ? QByteArray() : QByteArray::fromHex(fields.at(2));
        lines.append(l);
    }
    return lines;
}

int VunitProcess::find(quint8 code, const QByteArray &payload, int from) const
{
    const QVector<RecordLine> lines = record();
    for (int i = qMax(0, from); i < lines.size(); ++i) {
        if (lines.at(i).code == code && (payload.isNull() || lines.at(i).payload == payload))
            return i;
    }
    return -1;
}

qint64 VunitProcess::monotonicMs()
{
    QElapsedTimer t;
    t.start();
    return t.msecsSinceReference();
}

bool VunitProcess::writeAppDir(const QString &dir, const QString &port)
{
    const QDir delivered(QStringLiteral(QM_APP_DIR));
    if (!QDir().mkpath(dir + QStringLiteral("/config")))
        return false;
    for (const QString &name : QDir(delivered.filePath(QStringLiteral("config"))).entryList(QDir::Files)) {
        if (name != QLatin1String("port.xml") && name != QLatin1String("lastAddr.tmp"))
            QFile::copy(delivered.filePath(QStringLiteral("config/") + name), dir + QStringLiteral("/config/") + name);
    }
    QFile::link(delivered.filePath(QStringLiteral("image")), dir + QStringLiteral("/image"));
    QFile file(dir + QStringLiteral("/config/port.xml"));
    return file.open(QIODevice::WriteOnly)
        && file.write("<?xml version=\"1.0\"?><config><port>" + port.toUtf8() + "</port></config>\n") > 0;
}

bool VunitProcess::startWithApp(const QStringList &extra)
{
    const QString app = m_folder + QStringLiteral("/app");
    if (!start(extra) || !writeAppDir(app, m_linkPath))
        return false;
    AppPaths::setAppDir(app);
    return true;
}
