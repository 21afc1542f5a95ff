#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

// The simulated radio module (quillmark-modulesim), started for a test on
// 127.0.0.1 with a free port. Type address() into a module window's address
// field before anything connects.
class ModuleSimProcess
{
public:
    ModuleSimProcess();
    ~ModuleSimProcess();

    // Starts with --listen 127.0.0.1:0 plus extra (e.g. --kind falcon,
    // --record FILE); true once it printed where it listens.
    bool start(const QStringList &extra = QStringList());
    void terminate();

    // "127.0.0.1:PORT"
    QString address() const { return m_address; }
    quint16 port() const { return m_port; }
    QProcess &process() { return m_process; }

private:
    QProcess m_process;
    QString m_address;
    quint16 m_port = 0;
};
