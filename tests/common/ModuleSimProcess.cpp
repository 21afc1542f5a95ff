#include "ModuleSimProcess.h"

#include <QDeadlineTimer>

ModuleSimProcess::ModuleSimProcess()
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setProgram(QStringLiteral(QM_MODULESIM_BIN));
}

ModuleSimProcess::~ModuleSimProcess()
{
    terminate();
}

bool ModuleSimProcess::start(const QStringList &extra)
{
    m_process.setArguments(QStringList { QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0") } + extra);
    m_process.start();
    if (!m_process.waitForStarted(10000))
        return false;
    QDeadlineTimer deadline(20000);
    while (!m_process.canReadLine() && !deadline.hasExpired()) {
        if (!m_process.waitForReadyRead(int(qMax<qint64>(1, deadline.remainingTime()))))
            break;
    }
    const QString line = QString::fromLocal8Bit(m_process.readLine()).trimmed();
    const QString prefix = QStringLiteral("listening on 127.0.0.1:");
    if (!line.startsWith(prefix))
        return false;
    bool ok = false;
    m_port = quint16(line.mid(prefix.size()).toUInt(&ok));
    m_address = line.mid(QStringLiteral("listening on ").size());
    return ok && m_port != 0;
}

void ModuleSimProcess::terminate()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(10000)) {
        m_process.kill();
        m_process.waitForFinished(5000);
    }
}
