#include "ModuleServer.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

using namespace ModuleSim;

namespace
{

// How long a body shorter than its Content-Length is waited for: the link
// monitor announces 31 bytes whatever its command's length.
constexpr int kShortBodyWaitMs = 300;

} // namespace

// One connection's cutter and short-body timer, living as long as its socket.
class ModuleConnection : public QObject
{
public:
    explicit ModuleConnection(QTcpSocket *s)
        : QObject(s)
        , socket(s)
    {
        shortBody.setSingleShot(true);
        shortBody.setInterval(kShortBodyWaitMs);
    }

    QTcpSocket *socket;
    HttpRequestCutter cutter;
    QTimer shortBody;
    bool closing = false;
};

ModuleServer::ModuleServer(const SimOptions &options, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_site(options.kind, options.seed)
{
    connect(&m_server, &QTcpServer::newConnection, this, &ModuleServer::accept);
}

bool ModuleServer::start(QString *error)
{
    if (!m_options.recordPath.isEmpty()) {
        m_record.setFileName(m_options.recordPath);
        if (!m_record.open(QIODevice::WriteOnly | QIODevice::Append)) {
            *error = QStringLiteral("cannot write %1: %2").arg(m_options.recordPath, m_record.errorString());
            return false;
        }
    }
    if (!m_options.reportPath.isEmpty()) {
        QFile f(m_options.reportPath);
        if (!f.open(QIODevice::ReadOnly)) {
            *error = QStringLiteral("cannot read %1: %2").arg(m_options.reportPath, f.errorString());
            return false;
        }
        m_site.setFixedReport(f.readAll());
    }
    QHostAddress host;
    if (m_options.host == QLatin1String("localhost"))
        host = QHostAddress::LocalHost;
    else if (!host.setAddress(m_options.host)) {
        *error = QStringLiteral("%1 is not an IP address").arg(m_options.host);
        return false;
    }
    if (!m_server.listen(host, m_options.port)) {
        *error = QStringLiteral("cannot listen on %1:%2: %3")
                     .arg(m_options.host)
                     .arg(m_options.port)
                     .arg(m_server.errorString());
        return false;
    }
    return true;
}

QString ModuleServer::address() const
{
    const QHostAddress a = m_server.serverAddress();
    const QString host
        = a.protocol() == QAbstractSocket::IPv6Protocol ? '[' + a.toString() + ']' : a.toString();
    return host + ':' + QString::number(m_server.serverPort());
}

void ModuleServer::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        if (m_options.refuse) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        auto *c = new ModuleConnection(socket);
        connect(&c->shortBody, &QTimer::timeout, c, [this, c]() {
            if (!c->closing && c->cutter.waitingForBody())
                serve(c, c->cutter.takeShort());
        });
        connect(socket, &QTcpSocket::readyRead, c, [this, c]() {
            const QByteArray bytes = c->socket->readAll();
            if (c->closing)
                return;
            QVector<HttpRequest> requests;
            const bool fine = c->cutter.feed(bytes, &requests);
            for (const HttpRequest &r : qAsConst(requests))
                serve(c, r);
            if (!fine) {
                // Junk or an endless request: give up the connection rather
                // than the memory.
                c->closing = true;
                c->shortBody.stop();
                c->socket->abort();
                c->socket->deleteLater();
                return;
            }
            if (c->cutter.waitingForBody())
                c->shortBody.start();
            else
                c->shortBody.stop();
        });
    }
}

void ModuleServer::serve(ModuleConnection *c, const HttpRequest &request)
{
    if (m_record.isOpen()) {
        m_record.write(request.raw);
        m_record.flush();
    }
    // Answered in arrival order, so settings change in the order the requests came.
    const QByteArray reply = m_options.floodBytes > 0
        ? ModuleSite::response(QByteArray(m_options.floodBytes, 'x'))
        : m_site.respond(request);
    const bool thenClose = !request.keepAlive;
    if (m_options.slowMs <= 0) {
        send(c, reply, thenClose);
        return;
    }
    QTimer::singleShot(m_options.slowMs, c, [this, c, reply, thenClose]() { send(c, reply, thenClose); });
}

void ModuleServer::send(ModuleConnection *c, const QByteArray &reply, bool thenClose)
{
    if (c->closing || c->socket->state() != QAbstractSocket::ConnectedState)
        return;
    if (m_options.closeMidReply) {
        c->socket->write(reply.left(reply.size() / 2));
        thenClose = true;
    } else {
        c->socket->write(reply); // one write: the monitor reads head and report together
    }
    if (thenClose) {
        c->closing = true;
        c->shortBody.stop();
        c->socket->disconnectFromHost();
    }
}
