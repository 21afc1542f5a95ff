#pragma once

#include "ModuleSite.h"
#include "SimOptions.h"

#include <QFile>
#include <QObject>
#include <QTcpServer>

class ModuleConnection;

// Puts the module's web site on a TCP port: cuts the requests of every
// connection, records them, answers through the site and applies the
// misbehaviours chosen on the command line.
class ModuleServer : public QObject
{
    Q_OBJECT
public:
    explicit ModuleServer(const ModuleSim::SimOptions &options, QObject *parent = nullptr);

    // Opens the record file, reads the report file and starts listening;
    // false with a reason.
    bool start(QString *error);
    // "host:port" with the port actually taken.
    QString address() const;

private:
    void accept();
    void serve(ModuleConnection *c, const ModuleSim::HttpRequest &request);
    void send(ModuleConnection *c, const QByteArray &reply, bool thenClose);

    ModuleSim::SimOptions m_options;
    ModuleSim::ModuleSite m_site;
    QTcpServer m_server;
    QFile m_record;
};
