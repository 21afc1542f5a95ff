#include "ModuleAddress.h"

#include <QtTest>

class TestModuleAddress : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void parse_data();
    void parse();
    void loopback_data();
    void loopback();
    void startAddress();
};

void TestModuleAddress::parse_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");
    QTest::newRow("module as shipped") << "192.168.168.11" << true << "192.168.168.11" << 80;
    QTest::newRow("host and port") << "127.0.0.1:8080" << true << "127.0.0.1" << 8080;
    QTest::newRow("blanks around") << "  127.0.0.1:81 " << true << "127.0.0.1" << 81;
    QTest::newRow("bracketed v6 with port") << "[::1]:9000" << true << "::1" << 9000;
    QTest::newRow("bare v6") << "::1" << true << "::1" << 80;
    QTest::newRow("empty") << "" << false << "" << 80;
    QTest::newRow("port only") << ":80" << false << "" << 80;
    QTest::newRow("port zero") << "127.0.0.1:0" << false << "" << 80;
    QTest::newRow("port too big") << "127.0.0.1:65536" << false << "" << 80;
    QTest::newRow("port not a number") << "127.0.0.1:http" << false << "" << 80;
    QTest::newRow("empty port") << "127.0.0.1:" << false << "" << 80;
    QTest::newRow("unclosed bracket") << "[::1:80" << false << "" << 80;
}

void TestModuleAddress::parse()
{
    QFETCH(QString, typed);
    QFETCH(bool, valid);
    const ModuleAddress::Endpoint endpoint = ModuleAddress::parse(typed);
    QCOMPARE(endpoint.valid, valid);
    if (valid) {
        QFETCH(QString, host);
        QFETCH(int, port);
        QCOMPARE(endpoint.host, host);
        QCOMPARE(int(endpoint.port), port);
    }
}

void TestModuleAddress::loopback_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("loopback");
    QTest::newRow("127.0.0.1") << "127.0.0.1" << true;
    QTest::newRow("127.3.2.1") << "127.3.2.1" << true;
    QTest::newRow("::1") << "::1" << true;
    QTest::newRow("localhost") << "LocalHost" << true;
    QTest::newRow("factory address") << "192.168.168.11" << false;
    QTest::newRow("any") << "0.0.0.0" << false;
    QTest::newRow("a name") << "module.local" << false;
    QTest::newRow("looks like loopback") << "127.0.0.1.example" << false;
}

void TestModuleAddress::loopback()
{
    QFETCH(QString, host);
    QFETCH(bool, loopback);
    QCOMPARE(ModuleAddress::isLoopback(host), loopback);
}

void TestModuleAddress::startAddress()
{
    qunsetenv("QUILLMARK_MODULE_ADDRESS");
    QCOMPARE(ModuleAddress::startAddress(), QStringLiteral("192.168.168.11"));
    qputenv("QUILLMARK_MODULE_ADDRESS", " 127.0.0.1:4321 ");
    QCOMPARE(ModuleAddress::startAddress(), QStringLiteral("127.0.0.1:4321"));
}

QTEST_GUILESS_MAIN(TestModuleAddress)
#include "tst_moduleaddress.moc"
