// What the module window decides without widgets: the order of "Refresh
// all", the console's command history and where the window opens.
#include "CommandHistory.h"
#include "RefreshSequence.h"
#include "WindowFit.h"

#include <QtTest>

using Step = RefreshSequence::Step;
Q_DECLARE_METATYPE(QVector<Step>)

class TestModuleWindowLogic : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void refreshAsksEachQueryOnceInOrder_data();
    void refreshAsksEachQueryOnceInOrder();
    void stoppedRefreshBeginsNothingMore();
    void historyKeepsTheNewestCommands();
    void historyLineShowsTimeAndCommand();
    void windowFitsTheFreeArea_data();
    void windowFitsTheFreeArea();
};

void TestModuleWindowLogic::refreshAsksEachQueryOnceInOrder_data()
{
    QTest::addColumn<QVector<Step>>("steps");
    QTest::addColumn<QStringList>("buttons");
    const Step modem { "device_switch_flush", "AT+CFUN?" };
    const Step restart { "device_restart_flush", "AT+CFUN?" };
    const Step band { "band_flush", "AT^DAOCNDI?" };
    const Step group { "group_flush", "AT^DRPS?" };
    QTest::newRow("restart row asks what the modem row asked") << QVector<Step> { modem, restart, band,
        group } << QStringList { "device_switch_flush", "band_flush", "group_flush" };
    // The order is the rows' order, not the order of the queries' names.
    QTest::newRow("order kept") << QVector<Step> { group, band, modem }
                                << QStringList { "group_flush", "band_flush", "device_switch_flush" };
    QTest::newRow("nothing to ask") << QVector<Step> {} << QStringList {};
}

void TestModuleWindowLogic::refreshAsksEachQueryOnceInOrder()
{
    QFETCH(QVector<Step>, steps);
    QFETCH(QStringList, buttons);
    RefreshSequence sequence;
    sequence.start(steps);
    QVERIFY(sequence.running());
    QCOMPARE(sequence.total(), buttons.size());
    QStringList begun;
    while (const auto step = sequence.next()) {
        begun << step->button;
        QCOMPARE(sequence.begun(), begun.size());
    }
    QCOMPARE(begun, buttons);
    QVERIFY(!sequence.running());
    QVERIFY(!sequence.next());
}

void TestModuleWindowLogic::stoppedRefreshBeginsNothingMore()
{
    RefreshSequence sequence;
    sequence.start(
        { { "band_flush", "AT^DAOCNDI?" }, { "passwd_flush", "AT^DAPI?" }, { "ip_flush", "AT^NETIFCFG?" } });
    QCOMPARE(sequence.next()->button, QStringLiteral("band_flush"));
    sequence.stop();
    QVERIFY(!sequence.running());
    QVERIFY(!sequence.next());
    QCOMPARE(sequence.begun(), 1);
    // A new run starts from its first row again.
    sequence.start({ { "ip_flush", "AT^NETIFCFG?" } });
    QCOMPARE(sequence.next()->button, QStringLiteral("ip_flush"));
}

void TestModuleWindowLogic::historyKeepsTheNewestCommands()
{
    CommandHistory history;
    const QDateTime start(QDate(2026, 3, 14), QTime(9, 26, 53));
    for (int i = 1; i <= CommandHistory::kBound; ++i)
        QVERIFY(!history.add(QStringLiteral("AT^CMD%1?").arg(i), start.addSecs(i)));
    QCOMPARE(history.entries().size(), 200);
    // Command 201 pushes out command 1, and so on.
    QVERIFY(history.add(QStringLiteral("AT^CMD201?"), start.addSecs(201)));
    QVERIFY(history.add(QStringLiteral("AT^CMD202?"), start.addSecs(202)));
    QCOMPARE(history.entries().size(), 200);
    QCOMPARE(history.command(0), QStringLiteral("AT^CMD3?"));
    QCOMPARE(history.entries().first().sent, QDateTime(QDate(2026, 3, 14), QTime(9, 26, 56)));
    QCOMPARE(history.command(199), QStringLiteral("AT^CMD202?"));
    QCOMPARE(history.command(200), QString());
    QCOMPARE(history.command(-1), QString());
}

void TestModuleWindowLogic::historyLineShowsTimeAndCommand()
{
    const CommandHistory::Entry entry { QDateTime(QDate(2026, 11, 2), QTime(7, 5, 9)),
        "AT^DRPS=24100,3,\"20\"" };
    QCOMPARE(CommandHistory::line(entry), QStringLiteral("07:05:09  AT^DRPS=24100,3,\"20\""));
}

void TestModuleWindowLogic::windowFitsTheFreeArea_data()
{
    QTest::addColumn<QRect>("available");
    QTest::addColumn<QRect>("placed");
    // Room for 1280 x 800 and the frame (4, 32, 4, 4): the drawn size, centred.
    QTest::newRow("1920x1040") << QRect(0, 0, 1920, 1040) << QRect(320, 134, 1280, 800);
    // A second screen to the right, below a panel.
    QTest::newRow("second screen") << QRect(1920, 28, 1600, 1172) << QRect(2080, 228, 1280, 800);
    QTest::newRow("1024x600 netbook") << QRect(0, 0, 1024, 600) << QRect(4, 32, 1016, 564);
    QTest::newRow("1366x738 laptop") << QRect(0, 30, 1366, 738) << QRect(43, 62, 1280, 702);
    // No screen known: a window of one pixel rather than none.
    QTest::newRow("nothing free") << QRect() << QRect(4, 32, 1, 1);
}

void TestModuleWindowLogic::windowFitsTheFreeArea()
{
    QFETCH(QRect, available);
    QFETCH(QRect, placed);
    QCOMPARE(WindowFit::place(QSize(1280, 800), available), placed);
}

QTEST_APPLESS_MAIN(TestModuleWindowLogic)
#include "tst_modulewindowlogic.moc"
