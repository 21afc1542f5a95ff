#include "UnitRunner.h"

#include <QDeadlineTimer>

UnitRunner::UnitRunner(const QString &program, const QString &linkPath, const QString &logPath)
    : m_linkPath(linkPath)
{
    m_process.setProgram(program);
    // The unit's notes go to a file: read into a buffer nobody empties, they
    // would grow this process's memory, which is what the soak measures.
    m_process.setStandardErrorFile(logPath, QIODevice::Append);
}

UnitRunner::~UnitRunner()
{
    stop();
}

bool UnitRunner::start(const QStringList &arguments)
{
    m_process.setArguments(QStringList { QStringLiteral("--print-path"), QStringLiteral("--link"), m_linkPath }
        + arguments);
    m_process.start();
    if (!m_process.waitForStarted(10000))
        return false;
    QDeadlineTimer deadline(20000);
    while (!m_process.canReadLine() && !deadline.hasExpired()) {
        if (!m_process.waitForReadyRead(int(qMax<qint64>(1, deadline.remainingTime()))))
            break;
    }
    return m_process.readLine().startsWith("/dev/");
}

void UnitRunner::stop()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(10000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}
