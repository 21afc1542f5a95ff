// The simulated module program over TCP on 127.0.0.1, as the module windows
// will meet it: raw requests on a socket, the replies as bytes.
#include "ModuleSimProcess.h"

#include <QTcpSocket>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdio>

namespace
{

// The management window's form post, as its network access manager sends it.
QByteArray formPost(const QByteArray &path, const QByteArray &body)
{
    return "POST " + path
        + " HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Type: application/x-www-form-urlencoded\r\n"
        + "Content-Length: " + QByteArray::number(body.size()) + "\r\nConnection: Keep-Alive\r\n\r\n" + body;
}

// The link monitor's hand-made poll: Content-Length is always 31.
QByteArray monitorPoll(const QByteArray &ip, const QByteArray &command)
{
    return "POST /boafrm/formAtcmdProcess HTTP/1.1\r\nAccept:*/*\r\nReferer: http://" + ip
        + "/index/chn/modem_at_debug.htm\r\nHost: " + ip
        + "\r\nContent-Length: 31\r\nConnection: Keep-Alive\r\nCache-Control: no-cache\r\n"
          "Cookie: user_choose=block\r\n\r\nFormAtcmd_Param_Atcmd="
        + command;
}

// Reads until the reply announced by its Content-Length is complete, or the
// peer closes.
QByteArray readReply(QTcpSocket &socket)
{
    QByteArray got;
    QDeadlineTimer deadline(10000);
    while (!deadline.hasExpired()) {
        const int end = got.indexOf("\r\n\r\n");
        if (end >= 0) {
            const int at = got.indexOf("Content-Length: ");
            const int length = got.mid(at + 16, got.indexOf("\r\n", at) - at - 16).toInt();
            if (got.size() >= end + 4 + length)
                return got;
        }
        if (!socket.waitForReadyRead(100) && socket.state() != QAbstractSocket::ConnectedState)
            break;
        got += socket.readAll();
    }
    return got + socket.readAll();
}

} // namespace

class TestModuleSimE2e : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void answersFormsAndPollsOnOneConnection();
    void refusesWhenAsked();
    void closesMidReplyWhenAsked();
};

void TestModuleSimE2e::answersFormsAndPollsOnOneConnection()
{
    QTemporaryDir dir;
    const QString record = dir.filePath(QStringLiteral("record.bin"));
    ModuleSimProcess sim;
    QVERIFY(sim.start(
        { QStringLiteral("--kind"), QStringLiteral("falcon"), QStringLiteral("--record"), record }));

    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), sim.port());
    QVERIFY(socket.waitForConnected(5000));

    const QByteArray query = formPost("/boafrm/formAtcmdProcess", "FormAtcmd_Param_Atcmd=AT^DRPS?\r\n");
    socket.write(query);
    QCOMPARE(readReply(socket),
        QByteArray(
            "HTTP/1.1 200 OK\r\nServer: quillmark-modulesim\r\nContent-Type: text/plain\r\n"
            "Content-Length: 31\r\nConnection: keep-alive\r\n\r\n\r\n^DRPS: (24100,3,\"20\")\r\n\r\nOK\r\n"));

    const QByteArray poll = monitorPoll("127.0.0.1", "AT^DRPR=2");
    socket.write(poll);
    const QByteArray reply = readReply(socket);
    QCOMPARE(reply.indexOf("\r\n\r\n"), 276);
    const QByteArray report = reply.mid(280);
    QVERIFY(report.count("^DRPR: ") >= 2);
    for (const QByteArray &text : report.split('\n')) {
        if (!text.startsWith("^DRPR"))
            continue;
        short v[21];
        int d[2];
        QCOMPARE(std::sscanf(text.constData(),
                     "^DRPR: "
                     "%hd,%hd,%hd,%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%hd,\"%hd\",%d,%d,%hd,%hd,%hd,%hd,%hd,"
                     "\"%hd\",\"%hd\",%hd",
                     &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8], &v[9], &v[10], &d[0],
                     &d[1], &v[13], &v[14], &v[15], &v[16], &v[17], &v[18], &v[19], &v[20]),
            21);
    }

    // The monitor without a module kind: a body 9 bytes short of its
    // Content-Length, answered after the wait with a head alone.
    const QByteArray emptyPoll = monitorPoll("127.0.0.1", "");
    socket.write(emptyPoll);
    QCOMPARE(readReply(socket).size(), 280);

    QFile file(record);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), query + poll + emptyPoll);
}

void TestModuleSimE2e::refusesWhenAsked()
{
    ModuleSimProcess sim;
    QVERIFY(sim.start({ QStringLiteral("--refuse") }));
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), sim.port());
    socket.waitForConnected(5000);
    socket.write(formPost("/boafrm/formAtcmdProcess", "FormAtcmd_Param_Atcmd=AT+CFUN?\r\n"));
    QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::UnconnectedState, 10000);
    QCOMPARE(socket.readAll(), QByteArray());
}

void TestModuleSimE2e::closesMidReplyWhenAsked()
{
    ModuleSimProcess sim;
    QVERIFY(sim.start({ QStringLiteral("--close-mid-reply") }));
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), sim.port());
    QVERIFY(socket.waitForConnected(5000));
    socket.write(monitorPoll("127.0.0.1", "AT^DAPR=2"));
    const QByteArray got = readReply(socket);
    QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
    QVERIFY(got.startsWith("HTTP/1.1 200 OK\r\n"));
    // Cut short: less than the head, or less of the report than announced.
    const int at = got.indexOf("Content-Length: ");
    QVERIFY(
        got.size() < 280 || got.mid(at + 16, got.indexOf("\r\n", at) - at - 16).toInt() > got.size() - 280);
}

QTEST_GUILESS_MAIN(TestModuleSimE2e)
#include "tst_modulesim_e2e.moc"
