#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

// The virtual unit as a process of its own, on a pseudo-terminal linked at a
// fixed path: started, hung up (stopped, which closes the line) and started
// again on the same path, as a handset that is unplugged and plugged in.
class UnitRunner
{
public:
    UnitRunner(const QString &program, const QString &linkPath, const QString &logPath);
    ~UnitRunner();

    // Starts the unit with these arguments (besides its link); true once it
    // printed its pty.
    bool start(const QStringList &arguments);
    // Ends the unit; its line hangs up.
    void stop();
    bool running() const { return m_process.state() != QProcess::NotRunning; }
    QString linkPath() const { return m_linkPath; }

private:
    QProcess m_process;
    QString m_linkPath;
};
