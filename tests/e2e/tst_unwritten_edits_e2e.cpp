// The window against the virtual unit: an edit on a setting page is marked
// on its control and on the hub's menu button, and the hub's Return asks
// whether to write it, discard it or stay.
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "MCalculator.h"
#include "MSpinBox.h"
#include "MainWindow.h"
#include "ModelInterface.h"
#include "Messages.h"
#include "VunitProcess.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{
enum Answer { Write = 0, Discard = 1, Stay = 2 };

bool marked(const QWidget *w)
{
    return w && w->property("unwritten").toBool();
}
} // namespace

class TestUnwrittenEditsE2e : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void returnAsksAboutAnEdit_data();
    void returnAsksAboutAnEdit();
    void reconnectKeepsThePagesUntilTheHubIsLeft();
    // Last: a window that closes quits the application, and after that no
    // event loop of this process runs again (the window's pauses would spin
    // without hearing the unit).
    void closingAsksAboutAnEdit();
};

void TestUnwrittenEditsE2e::cleanup()
{
    Messages::setResponder({});
    Messages::setChoiceResponder({});
}

void TestUnwrittenEditsE2e::returnAsksAboutAnEdit_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("staysInHub");
    QTest::addColumn<bool>("written");
    QTest::addColumn<bool>("editShown");

    QTest::newRow("write") << int(Write) << false << true << true;
    QTest::newRow("discard") << int(Discard) << false << false << false;
    QTest::newRow("stay") << int(Stay) << true << false << true;
}

void TestUnwrittenEditsE2e::returnAsksAboutAnEdit()
{
    QFETCH(int, answer);
    QFETCH(bool, staysInHub);
    QFETCH(bool, written);
    QFETCH(bool, editShown);

    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.startWithApp({ "--model", "ROWAN", "--module", "0" }));

    QStringList dialogs;
    Messages::setResponder([&](const Messages::Shown &shown) {
        dialogs << shown.title;
        return true;
    });
    QList<Messages::Shown> questions;
    QStringList offered;
    Messages::setChoiceResponder([&](const Messages::Shown &shown, const QStringList &choices) {
        questions << shown;
        offered = choices;
        return answer;
    });

    MainWindow window;
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 10000);
    QSignalSpy answers(&window, &MainWindow::signal_information);
    window.showHub();
    ChannelListenInterface *hub = window.hub();
    // Both answers of SBUS port 1 are in.
    auto answered = [&](CodeID code) {
        return std::any_of(answers.cbegin(), answers.cend(), [code](const QList<QVariant> &a) {
            return a.at(0).value<CodeID>() == code && a.at(1).toByteArray().startsWith('\0');
        });
    };
    QTRY_VERIFY_WITH_TIMEOUT(answered(SbusTuningData) && answered(SbusNoneData), 5000);

    auto *trim = hub->findChild<MSpinBox *>("fineTuning_3");
    auto *otherTrim = hub->findChild<MSpinBox *>("fineTuning_4");
    QVERIFY(trim && otherTrim);
    const double unitValue = trim->currentValue();
    QVERIFY(unitValue != -37.0);
    QTest::qWait(100);
    QVERIFY(!marked(trim));
    QVERIFY(!marked(hub->menuButton(SectionSbus1)));

    // The edit, typed on the keypad.
    QTest::mouseClick(trim, Qt::LeftButton, Qt::NoModifier, trim->rect().center());
    auto *keypad = trim->findChild<MCalculator *>();
    QVERIFY(keypad);
    for (Qt::Key key : { Qt::Key_Minus, Qt::Key_3, Qt::Key_7, Qt::Key_Enter })
        QTest::keyClick(keypad, key);
    QCOMPARE(trim->currentValue(), -37.0);
    QTRY_VERIFY_WITH_TIMEOUT(marked(trim), 2000);
    QVERIFY(!marked(otherTrim));
    QVERIFY(marked(hub->menuButton(SectionSbus1)));
    QVERIFY(!marked(hub->menuButton(SectionSbus2)));
    QVERIFY(!marked(hub->menuButton(SectionChannelHold)));

    const int writesBefore = unit.find(0xA4);
    QCOMPARE(writesBefore, -1);
    QTest::mouseClick(hub->findChild<QPushButton *>("returnButton"), Qt::LeftButton);

    QCOMPARE(questions.size(), 1);
    QCOMPARE(questions.first().title, QStringLiteral("未写入的修改"));
    QVERIFY2(
        questions.first().text.contains(QStringLiteral("SBUS1设置")), qPrintable(questions.first().text));
    QVERIFY(!questions.first().text.contains(QStringLiteral("SBUS2设置")));
    QCOMPARE(offered, QStringList({ "写入", "放弃修改", "留下" }));
    // The question asked about writing; the write's own confirmation is not asked again.
    QVERIFY(!dialogs.contains(QStringLiteral("写入数据")));

    QCOMPARE(window.currentPage() == hub, staysInHub);
    QCOMPARE(trim->currentValue(), editShown ? -37.0 : unitValue);
    if (written) {
        // Channel 3's trim is byte 3 of port 1's tuning frame: -37 in sign and magnitude.
        QTRY_VERIFY_WITH_TIMEOUT(unit.find(0xA4) >= 0, 3000);
        const QByteArray frame = unit.record().at(unit.find(0xA4)).payload;
        QCOMPARE(frame.size(), 85);
        QCOMPARE(quint8(frame.at(0)), quint8(0));
        QCOMPARE(quint8(frame.at(3)), quint8(0x80 | 37));
        QCOMPARE(frame.at(4),
            char(qRound(otherTrim->currentValue()) < 0 ? 0x80 | -qRound(otherTrim->currentValue())
                                                       : qRound(otherTrim->currentValue())));
    } else {
        QTest::qWait(300);
        QCOMPARE(unit.find(0xA4), -1);
    }
    // Written or discarded, nothing is left to mark; kept, the marks stay.
    QTRY_COMPARE_WITH_TIMEOUT(marked(trim), staysInHub, 2000);
    QCOMPARE(marked(hub->menuButton(SectionSbus1)), staysInHub);
}

// Closing the window with an edit: staying keeps it open and sends nothing,
// discarding closes it as always (stop the upload, then 0xAD).
void TestUnwrittenEditsE2e::closingAsksAboutAnEdit()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.startWithApp({ "--model", "CEDAR", "--module", "0" }));
    int answer = Stay;
    QStringList texts;
    Messages::setChoiceResponder([&](const Messages::Shown &shown, const QStringList &) {
        texts << shown.text;
        return answer;
    });

    MainWindow window;
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 10000);
    QSignalSpy answers(&window, &MainWindow::signal_information);
    window.showHub();
    QTRY_VERIFY_WITH_TIMEOUT(
        std::any_of(answers.cbegin(), answers.cend(),
            [](const QList<QVariant> &a) { return a.at(0).value<CodeID>() == SbusNoneData; }),
        5000);
    auto *fixed = window.hub()->findChild<MSpinBox *>("noneValue_16");
    QVERIFY(fixed);
    fixed->slot_calculatorMsg(fixed->currentValue() == 61 ? 62 : 61);
    QTRY_VERIFY_WITH_TIMEOUT(marked(fixed), 2000);

    QVERIFY(!window.close());
    QCOMPARE(texts.size(), 1);
    QVERIFY2(texts.first().endsWith(QStringLiteral("关闭前要写入吗？")), qPrintable(texts.first()));
    QVERIFY(window.isVisible());
    QTest::qWait(300);
    QCOMPARE(unit.find(0xAD), -1);

    answer = Discard;
    QVERIFY(window.close());
    QCOMPARE(texts.size(), 2);
    QTRY_VERIFY_WITH_TIMEOUT(unit.find(0xAD, QByteArray(1, '\0')) > unit.find(0xE4), 3000);
    QCOMPARE(unit.find(0xA8), -1);
}

// The unit goes away while an edit is on the hub and comes back: staying
// keeps the old pages with the edit (no rebuild, no upload started); leaving
// the hub asks again, and after discarding the pages are rebuilt.
void TestUnwrittenEditsE2e::reconnectKeepsThePagesUntilTheHubIsLeft()
{
    QTemporaryDir dir;
    VunitProcess first(dir.path());
    QVERIFY(first.startWithApp({ "--model", "CEDAR", "--module", "0", "--hangup-after", "6000" }));
    QList<int> answers { Stay, Discard };
    QStringList texts;
    Messages::setChoiceResponder([&](const Messages::Shown &shown, const QStringList &) {
        texts << shown.text;
        return answers.isEmpty() ? int(Discard) : answers.takeFirst();
    });

    MainWindow window;
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 10000);
    QSignalSpy spy(&window, &MainWindow::signal_information);
    window.showHub();
    QTRY_VERIFY_WITH_TIMEOUT(
        std::any_of(spy.cbegin(), spy.cend(),
            [](const QList<QVariant> &a) { return a.at(0).value<CodeID>() == SbusTuningData; }),
        5000);
    QPointer<ChannelListenInterface> oldHub = window.hub();
    auto *right = oldHub->findChild<MSpinBox *>("rightTrip_9");
    QVERIFY(right);
    const double unitValue = right->currentValue();
    right->slot_calculatorMsg(unitValue == 133 ? 134 : 133);
    const double edited = right->currentValue();
    QTRY_VERIFY_WITH_TIMEOUT(marked(right), 2000);

    QTRY_VERIFY_WITH_TIMEOUT(first.process().state() == QProcess::NotRunning, 15000);
    QTRY_VERIFY_WITH_TIMEOUT(window.currentPage() != oldHub, 5000);
    VunitProcess second(dir.path());
    QVERIFY(second.start({ "--model", "CEDAR", "--module", "0" }));

    // Asked on the reconnect; staying shows the old hub with the edit again.
    QTRY_COMPARE_WITH_TIMEOUT(texts.size(), 1, 15000);
    QVERIFY2(texts.first().contains(QStringLiteral("页面将重建")), qPrintable(texts.first()));
    QCOMPARE(window.hub(), oldHub.data());
    QCOMPARE(window.currentPage(), oldHub.data());
    QCOMPARE(right->currentValue(), edited);
    QVERIFY(marked(right));
    QTest::qWait(300);
    QCOMPARE(second.find(0xE5), -1);

    // Leaving the hub asks again; discarded, the pages are rebuilt and the
    // model page comes back with its upload.
    QTest::mouseClick(oldHub->findChild<QPushButton *>("returnButton"), Qt::LeftButton);
    QCOMPARE(texts.size(), 2);
    QTRY_VERIFY_WITH_TIMEOUT(oldHub.isNull(), 5000);
    QVERIFY(window.hub());
    QCOMPARE(window.currentPage(), window.modelPage(2));
    QTRY_VERIFY_WITH_TIMEOUT(second.find(0xE5, QByteArray::fromHex("0232")) >= 0, 5000);
    QCOMPARE(window.hub()->findChild<MSpinBox *>("rightTrip_9")->currentValue(), unitValue);
    QCOMPARE(second.find(0xA4), -1);
}

QTEST_MAIN(TestUnwrittenEditsE2e)
#include "tst_unwritten_edits_e2e.moc"
