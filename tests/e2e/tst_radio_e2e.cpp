// The module power page against the virtual unit over a real pty: the two
// reads, a write, the ground and air module resets with their questions, and
// the page's part of the parameter file.
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "MCheckBox.h"
#include "MSpinBox.h"
#include "MainWindow.h"
#include "Messages.h"
#include "PhaseSwitch.h"
#include "RFParaConfig.h"
#include "RFRadioConfig.h"
#include "VunitProcess.h"

#include <QComboBox>
#include <QPushButton>
#include <QtTest>

class TestRadioEndToEnd : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void pageShowsWhatTheUnitHolds();
    void writeSendsBothPairs();
    void resetAsksFirstAndWaitsForTheAnswer_data();
    void resetAsksFirstAndWaitsForTheAnswer();
    void answersOfOtherLengthsChangeNothing();
    void configButtonOpensAModuleWindowPerPress();

private:
    template<typename T> T *child(const char *name)
    {
        T *w = m_page->findChild<T *>(QLatin1String(name));
        if (!w)
            qFatal("no %s", name);
        return w;
    }
    QPushButton *hubButton(const char *name)
    {
        auto *b = m_window->hub()->findChild<QPushButton *>(QLatin1String(name));
        if (!b)
            qFatal("no %s", name);
        return b;
    }

    QTemporaryDir m_dir;
    VunitProcess *m_unit = nullptr;
    MainWindow *m_window = nullptr;
    RFRadioConfig *m_page = nullptr;
    QStringList m_shown;
    bool m_answer = true;
};

void TestRadioEndToEnd::initTestCase()
{
    m_unit = new VunitProcess(m_dir.path());
    QVERIFY(m_unit->startWithApp({ "--model", "ROWAN", "--module", "1" }));
    Messages::setResponder([this](const Messages::Shown &shown) {
        m_shown << shown.title + '/' + shown.text;
        return m_answer;
    });

    m_window = new MainWindow;
    m_window->show();
    QTRY_VERIFY_WITH_TIMEOUT(m_window->hub(), 10000);
    m_window->showHub();
    m_page = m_window->hub()->findChild<RFRadioConfig *>();
    QVERIFY(m_page);
    QVERIFY(hubButton("rfradioConfig")->isVisible());
    QVERIFY(!hubButton("customConfig")->isVisible());
}

void TestRadioEndToEnd::cleanupTestCase()
{
    delete m_window;
    m_unit->terminate();
    delete m_unit;
    Messages::setResponder({});
}

void TestRadioEndToEnd::pageShowsWhatTheUnitHolds()
{
    hubButton("rfradioConfig")->click();
    QVERIFY(m_page->isVisible());
    QVERIFY(m_unit->find(0x36) >= 0);
    QVERIFY(m_unit->find(0x38) > m_unit->find(0x36));
    // The unit's factory values: power on with "ROM" on, powered from its
    // switch 1 (SB, the selector's entry 2 after "NONE" and SA) at 6.
    QTRY_COMPARE(child<PhaseSwitch>("modulePower")->index(), 1);
    QVERIFY(child<MCheckBox>("moduleRom")->checked());
    auto *selector = child<QComboBox>("modulePhysicalSwitch");
    QTRY_COMPARE(selector->currentIndex(), 2);
    QCOMPARE(selector->currentText(), QStringLiteral("SB"));
    QCOMPARE(child<MSpinBox>("modulePhysicalValue")->currentValue(), 6.0);
}

void TestRadioEndToEnd::writeSendsBothPairs()
{
    hubButton("rfradioConfig")->click();
    QTRY_COMPARE(child<PhaseSwitch>("modulePower")->index(), 1);
    auto *power = child<PhaseSwitch>("modulePower");
    QTest::mouseClick(power, Qt::LeftButton, {}, QPoint(power->width() * 3 / 4, power->height() / 2));
    QCOMPARE(power->index(), 0); // the lit "ON" half pressed: "OFF"
    auto *rom = child<MCheckBox>("moduleRom");
    QTest::mouseClick(rom, Qt::LeftButton, {}, QPoint(8, rom->height() / 2));
    QVERIFY(!rom->checked());
    child<QComboBox>("modulePhysicalSwitch")->setCurrentIndex(0); // "NONE"
    child<MSpinBox>("modulePhysicalValue")->slot_calculatorMsg(9);

    const int from = m_unit->record().size();
    m_answer = true;
    hubButton("saveData")->click();
    QVERIFY(m_shown.contains(QStringLiteral("写入数据/确认要写入数据吗!")));
    const int power37 = m_unit->find(0x37, QByteArray::fromHex("0000"), from);
    QVERIFY(power37 >= 0);
    QVERIFY(m_unit->find(0x39, QByteArray::fromHex("ff09"), power37) > power37);

    // What the unit now holds comes back on the next read, and into the file.
    hubButton("readData")->click();
    QTRY_COMPARE(child<QComboBox>("modulePhysicalSwitch")->currentIndex(), 0);
    QCOMPARE(m_window->parameterFileText().count(
                 QStringLiteral("<modulePowerState>0,0</modulePowerState>\r\n"
                                "<modulePhysicalCtl>255,9</modulePhysicalCtl>\r\n")),
        1);
}

void TestRadioEndToEnd::resetAsksFirstAndWaitsForTheAnswer_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("result");
    QTest::newRow("ground") << QByteArray("groundReset") << 0x11
                            << QStringLiteral("重置图传模块/确认要重置地面端模块吗！")
                            << QStringLiteral("Dialog/地面端模组恢复出厂设置成功");
    QTest::newRow("air") << QByteArray("airReset") << 0x12
                         << QStringLiteral("重置图传模块/确认要重置天空端模块吗！")
                         << QStringLiteral("Dialog/天空端模块恢复出厂设置成功");
}

void TestRadioEndToEnd::resetAsksFirstAndWaitsForTheAnswer()
{
    QFETCH(QByteArray, button);
    QFETCH(int, code);
    QFETCH(QString, question);
    QFETCH(QString, result);
    hubButton("rfradioConfig")->click();
    auto *reset = child<QPushButton>(button.constData());

    m_shown.clear();
    m_answer = false; // "否"
    reset->click();
    QCOMPARE(m_shown, QStringList { question });
    QVERIFY(reset->isEnabled());
    QTest::qWait(300);
    QCOMPARE(m_unit->find(quint8(code)), -1);

    m_shown.clear();
    m_answer = true;
    // The button is disabled and marked until the unit answers; the answer
    // is shown in a message-only dialog, through which the responder sees it.
    bool disabledWhileWaiting = false;
    QMetaObject::Connection watch = connect(m_page, &RFRadioConfig::signal_resetModule_ground, this,
        [&]() { disabledWhileWaiting = !reset->isEnabled() && reset->property("urgent").toBool(); });
    QMetaObject::Connection watchAir = connect(m_page, &RFRadioConfig::signal_resetModule_air, this,
        [&]() { disabledWhileWaiting = !reset->isEnabled() && reset->property("urgent").toBool(); });
    reset->click();
    disconnect(watch);
    disconnect(watchAir);
    QVERIFY(disabledWhileWaiting);
    QTRY_VERIFY(m_unit->find(quint8(code)) >= 0);
    QTRY_COMPARE(m_shown, (QStringList { question, result }));
    QVERIFY(reset->isEnabled());
    QCOMPARE(reset->property("urgent").toBool(), false);
}

void TestRadioEndToEnd::answersOfOtherLengthsChangeNothing()
{
    auto *power = child<PhaseSwitch>("modulePower");
    auto *selector = child<QComboBox>("modulePhysicalSwitch");
    m_page->slot_information(CodeID(74), QByteArray::fromHex("0100"));
    QCOMPARE(power->index(), 1);
    m_page->slot_information(CodeID(74), QByteArray::fromHex("000000"));
    QCOMPARE(power->index(), 1);
    m_page->slot_information(CodeID(76), QByteArray::fromHex("0304"));
    QCOMPARE(selector->currentIndex(), 4);
    m_page->slot_information(CodeID(76), QByteArray::fromHex("ff04"));
    QCOMPARE(selector->currentIndex(), 0);
    m_page->slot_information(CodeID(76), QByteArray::fromHex("01"));
    QCOMPARE(selector->currentIndex(), 0);

    // A reset answer other than 1 or 2 frees the button and shows nothing.
    auto *reset = child<QPushButton>("groundReset");
    reset->setEnabled(false);
    m_shown.clear();
    m_page->slot_information(CodeID(34), QByteArray::fromHex("0102"));
    QVERIFY(!reset->isEnabled());
    m_page->slot_information(CodeID(34), QByteArray::fromHex("03"));
    QVERIFY(reset->isEnabled());
    QVERIFY(m_shown.isEmpty());
    m_page->slot_information(CodeID(35), QByteArray::fromHex("02"));
    QCOMPARE(m_shown, QStringList { QStringLiteral("Dialog/天空端模块恢复出厂设置失败") });
}

void TestRadioEndToEnd::configButtonOpensAModuleWindowPerPress()
{
    hubButton("rfradioConfig")->click();
    const auto opened = [] {
        QList<QWidget *> found;
        for (QWidget *w : QApplication::topLevelWidgets()) {
            if (qobject_cast<RFParaConfig *>(w) && w->isVisible())
                found.append(w);
        }
        return found;
    };
    child<QPushButton>("rfRadioSet")->click();
    child<QPushButton>("rfRadioSet")->click();
    QCOMPARE(opened().size(), 2);
    for (QWidget *w : opened())
        w->close();
    QTRY_VERIFY(opened().isEmpty());
}

QTEST_MAIN(TestRadioEndToEnd)
#include "tst_radio_e2e.moc"
