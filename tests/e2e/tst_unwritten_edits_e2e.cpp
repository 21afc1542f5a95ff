// The window against the virtual unit: an edit on a setting page is marked
// on its control and on the hub's menu button, and the hub's Return asks
// whether to write it, discard it or stay.
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "MCalculator.h"
#include "MSpinBox.h"
#include "MainWindow.h"
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
    QVERIFY(unit.start({ "--model", "ROWAN", "--module", "0" }));
    QVERIFY(VunitProcess::writeAppDir(dir.filePath("app"), unit.linkPath()));
    AppPaths::setAppDir(dir.filePath("app"));

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

    QCOMPARE(window.centralWidget() == hub, staysInHub);
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

QTEST_MAIN(TestUnwrittenEditsE2e)
#include "tst_unwritten_edits_e2e.moc"
