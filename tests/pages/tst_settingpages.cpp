// The SBUS channel settings and channel hold pages as a user drives them:
// answers shown in the controls, edits collected into the record and the
// payloads the write sends.
#include "DeviceData.h"
#include "MCheckBox.h"
#include "MSpinBox.h"
#include "ParameterFile.h"
#include "PhaseSwitch.h"
#include "RecordHost.h"
#include "SbusConfig.h"
#include "SbusHold.h"

#include <QComboBox>
#include <QtTest>

namespace
{

template <typename T> T *child(QWidget *page, const QString &name)
{
    T *w = page->findChild<T *>(name);
    if (!w)
        qFatal("no %s", qPrintable(name));
    return w;
}

// A click on an MCheckBox's box, where it takes presses.
void clickBox(MCheckBox *box)
{
    const int h = box->height();
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(h / 2, h / 2));
}

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// Every control of port 2 set to a value of its own (see kEditedSbus).
void editEverySbusControl(SbusConfig &page)
{
    const int trims[16] = { -125, 1, -2, 3, -4, 5, -6, 7, -8, 9, -10, 11, -12, 13, -14, 125 };
    const int maps[16] = { 0, 1, 4, 3, 0, 1, 2, 4, 0, 1, 2, 3, 0, 4, 2, 3 }; // 4: "NONE"
    for (int c = 1; c <= 16; ++c) {
        const QString n = QString::number(c);
        child<PhaseSwitch>(&page, "phase_" + n)->setM_index(c == 2 || c == 5 || c == 11 || c == 16 ? 1 : 0);
        child<MSpinBox>(&page, "fineTuning_" + n)->setM_currentValue(trims[c - 1]);
        child<MSpinBox>(&page, "leftTrip_" + n)->setM_currentValue(10 + c);
        child<MSpinBox>(&page, "rightTrip_" + n)->setM_currentValue(150 - c);
        auto *failsafe = child<MSpinBox>(&page, "safeProtection_" + n);
        failsafe->setM_checked(c != 1 && c != 9);
        failsafe->setM_currentValue(c % 2 == 0 && c != 16 ? -9 * c : 9 * c);
        child<QComboBox>(&page, "channelMap_" + n)->setCurrentIndex(maps[c - 1]);
        child<MSpinBox>(&page, "noneValue_" + n)->setM_currentValue(6 * c - 50);
    }
}

// What a write of port 2 sends after editEverySbusControl.
const char *const kEditedSbus[2] = {
    "01"
    "fd0182038405860788098a0b8c0d8e7d" // trims, sign and magnitude
    "0b0c0d0e0f101112131415161718191a" // left travels
    "9594939291908f8e8d8c8b8a89888786" // right travels
    "ff121b242d363f48ff5a636c757e8790" // failsafes, 255 = off
    "aa2a" // failsafe signs: CH2, 4, 6, 8 and CH10, 12, 14
    "1284" // phases: CH2, 5 and CH11, 16
    "0001fe03000102fe0001020300fe0203", // inputs, 254 = "NONE"
    "01aca6a09a948e8882040a10161c22282e", // fixed values, sign and magnitude
};

// An answer of the unit for port 2: the whole tuning group, or the fixed values.
const char kTuningAnswer[] = "01"
                             "03030303030303030303030303030303"
                             "20202020202020202020202020202020"
                             "30303030303030303030303030303030"
                             "ffffffffffffffffffffffffffffffff"
                             "0000"
                             "0000"
                             "01010101010101010101010101010101";
const char kFixedAnswer[] = "0105050505050505050505050505058505";

} // namespace

class TestSettingPages : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void sbusAnswerShowsInTheControls();
    void answerForTheOtherPortShowsWhenThatPortIsChosen();
    void choosingNoneShowsTheFixedValueAndWrites254();
    void failsafeIsCollectedSignedAndSentAsMagnitude();
    void holdWithoutSwitchIsLockedAndWrites255();
    void anotherSwitchShowsEveryChannelUnheld();
    void heldChannelsAreClickedAndWritten();
    void sbusAnswerLeavesTheEditsOfOtherFields_data();
    void sbusAnswerLeavesTheEditsOfOtherFields();
    void holdAnswerLeavesTheEditsOfOtherFields_data();
    void holdAnswerLeavesTheEditsOfOtherFields();
    void writeAllAfterALoadSendsTheRecordBounded();

private:
    RecordHost m_host;
};

void TestSettingPages::init()
{
    m_host.data = DeviceData();
    m_host.data.channelMapNames = QStringList { "T1", "T2", "T3", "T4" };
    m_host.data.holdSwitchNames = QStringList { "NONE", "SA", "SB" };
}

void TestSettingPages::sbusAnswerShowsInTheControls()
{
    SbusConfig page;
    page.resize(1280, 700);
    page.show();
    page.showSection(0);
    QByteArray t(85, '\0');
    for (int c = 0; c < 16; ++c)
        t[49 + c] = char(255);
    t[1] = char(0x85); // channel 1 trim -5
    t[17 + 1] = char(80); // channel 2 left travel
    t[49 + 2] = char(40); // channel 3 failsafe 40 ...
    t[65] = char(0x04); // ... negative
    t[69 + 3] = char(254); // channel 4 on "NONE"
    t[67] = char(0x10); // channel 5 reversed
    t[69 + 5] = char(2); // channel 6 follows T3
    page.slot_information(SbusTuningData, t);
    QByteArray n(17, '\0');
    n[4] = char(0x94); // channel 4 fixed at -20
    page.slot_information(SbusNoneData, n);

    QCOMPARE(child<MSpinBox>(&page, "fineTuning_1")->currentValue(), -5.0);
    QCOMPARE(child<MSpinBox>(&page, "leftTrip_2")->currentValue(), 80.0);
    QVERIFY(!child<MSpinBox>(&page, "safeProtection_2")->checked());
    QCOMPARE(child<MSpinBox>(&page, "safeProtection_2")->currentValue(), 0.0);
    QVERIFY(child<MSpinBox>(&page, "safeProtection_3")->checked());
    QCOMPARE(child<MSpinBox>(&page, "safeProtection_3")->currentValue(), -40.0);
    QCOMPARE(child<QComboBox>(&page, "channelMap_4")->currentText(), QStringLiteral("NONE"));
    QVERIFY(child<MSpinBox>(&page, "noneValue_4")->isVisible());
    QCOMPARE(child<MSpinBox>(&page, "noneValue_4")->currentValue(), -20.0);
    QVERIFY(!child<MSpinBox>(&page, "noneValue_6")->isVisible());
    QCOMPARE(child<QComboBox>(&page, "channelMap_6")->currentText(), QStringLiteral("T3"));
    QCOMPARE(child<PhaseSwitch>(&page, "phase_5")->index(), 1);
    QCOMPARE(child<PhaseSwitch>(&page, "phase_4")->index(), 0);

    // Read and written again unchanged, the page sends what the unit sent.
    QCOMPARE(page.collectPayloads(), (QList<QByteArray> { t, n }));
}

void TestSettingPages::answerForTheOtherPortShowsWhenThatPortIsChosen()
{
    SbusConfig page;
    page.showSection(0);
    QByteArray t(85, '\0');
    t[0] = 1;
    t[1] = char(0x0C); // port 2, channel 1 trim 12
    page.slot_information(SbusTuningData, t);
    QCOMPARE(child<MSpinBox>(&page, "fineTuning_1")->currentValue(), 0.0);
    page.showSection(1);
    QCOMPARE(child<MSpinBox>(&page, "fineTuning_1")->currentValue(), 12.0);
    page.showSection(0);
    QCOMPARE(child<MSpinBox>(&page, "fineTuning_1")->currentValue(), 0.0);
}

void TestSettingPages::choosingNoneShowsTheFixedValueAndWrites254()
{
    SbusConfig page;
    page.resize(1280, 700);
    page.show();
    page.showSection(1);
    auto *selector = child<QComboBox>(&page, "channelMap_2");
    auto *fixed = child<MSpinBox>(&page, "noneValue_2");
    QCOMPARE(selector->count(), 5); // T1..T4, NONE
    QVERIFY(!fixed->isVisible());
    selector->setFocus();
    QTest::keyClick(selector, Qt::Key_End); // the last entry, "NONE"
    QCOMPARE(selector->currentText(), QStringLiteral("NONE"));
    QVERIFY(fixed->isVisible());
    fixed->slot_calculatorMsg(-5);

    const QList<QByteArray> payloads = page.collectPayloads();
    QCOMPARE(quint8(payloads.at(0).at(0)), quint8(1));
    QCOMPARE(quint8(payloads.at(0).at(69 + 1)), quint8(254));
    QCOMPARE(quint8(payloads.at(1).at(2)), quint8(0x85));
    QCOMPARE(m_host.data.channelMap[1][1], 254);
    QCOMPARE(m_host.data.noneValue[1][1], -5);

    QTest::keyClick(selector, Qt::Key_Home);
    QVERIFY(!fixed->isVisible());
    QCOMPARE(quint8(page.collectPayloads().at(0).at(69 + 1)), quint8(0));
}

void TestSettingPages::failsafeIsCollectedSignedAndSentAsMagnitude()
{
    SbusConfig page;
    page.resize(1280, 700);
    page.show();
    auto *failsafe = child<MSpinBox>(&page, "safeProtection_10");
    QVERIFY(!failsafe->checked());
    // The enable box is the left quarter of the control.
    QTest::mouseClick(failsafe, Qt::LeftButton, Qt::NoModifier, QPoint(6, failsafe->height() / 2));
    QVERIFY(failsafe->checked());
    failsafe->slot_calculatorMsg(-40);

    QByteArray t = page.collectPayloads().at(0);
    QCOMPARE(quint8(t.at(49 + 9)), quint8(40));
    QCOMPARE(quint8(t.at(65)), quint8(0x00));
    QCOMPARE(quint8(t.at(66)), quint8(0x02)); // channel 10 is bit 1 of byte 66
    QCOMPARE(m_host.data.safeProtectionValue[0][9], -40);
    QCOMPARE(m_host.data.safeProtectionState[0][9], 1);

    QTest::mouseClick(failsafe, Qt::LeftButton, Qt::NoModifier, QPoint(6, failsafe->height() / 2));
    t = page.collectPayloads().at(0);
    QCOMPARE(quint8(t.at(49 + 9)), quint8(255));
    QCOMPARE(quint8(t.at(66)), quint8(0x00));
    QCOMPARE(m_host.data.safeProtectionValue[0][9], 255);

    // The collected record shows the same failsafe when the port is shown again.
    QTest::mouseClick(failsafe, Qt::LeftButton, Qt::NoModifier, QPoint(6, failsafe->height() / 2));
    failsafe->slot_calculatorMsg(-40);
    page.collectPayloads();
    page.showSection(1);
    page.showSection(0);
    QCOMPARE(failsafe->currentValue(), -40.0);
}

void TestSettingPages::holdWithoutSwitchIsLockedAndWrites255()
{
    m_host.data.sbusHoldSwitch[0] = 255;
    m_host.data.sbusHoldSwitch[1] = 0;
    m_host.data.sbusHold[0][0][0] = 1;
    SbusHold page;
    page.refreshFromRecord();
    QCOMPARE(child<QComboBox>(&page, "sbus1")->currentIndex(), 0);
    QCOMPARE(child<QComboBox>(&page, "sbus2")->currentText(), QStringLiteral("SA"));
    auto *ch1 = child<MCheckBox>(&page, "sbus1Channel_1");
    QVERIFY(!ch1->checkEnable());
    QVERIFY(!ch1->checked());
    QVERIFY(!child<MCheckBox>(&page, "sbus1gear_0")->checkEnable());
    QVERIFY(child<MCheckBox>(&page, "sbus2Channel_1")->checkEnable());

    const QByteArray payload = page.collectPayloads().at(0);
    QCOMPARE(payload.size(), 16);
    QCOMPARE(quint8(payload.at(1)), quint8(0xFF));
    QCOMPARE(quint8(payload.at(9)), quint8(0x00)); // port 2 on its first switch, SA
}

void TestSettingPages::anotherSwitchShowsEveryChannelUnheld()
{
    m_host.data.sbusHoldSwitch[0] = 1; // SB
    m_host.data.sbusHold[0][0][2] = 1;
    SbusHold page;
    page.refreshFromRecord();
    auto *selector = child<QComboBox>(&page, "sbus1");
    auto *ch3 = child<MCheckBox>(&page, "sbus1Channel_3");
    QCOMPARE(selector->currentText(), QStringLiteral("SB"));
    QVERIFY(ch3->checked());
    selector->setCurrentIndex(1); // SA
    QVERIFY(ch3->checkEnable());
    QVERIFY(!ch3->checked());
    QVERIFY(child<MCheckBox>(&page, "sbus1gear_0")->checked());
    selector->setCurrentIndex(2); // back to the stored switch
    QVERIFY(ch3->checked());
}

void TestSettingPages::heldChannelsAreClickedAndWritten()
{
    m_host.data.sbusHoldSwitch[0] = 0;
    m_host.data.sbusHoldSwitch[1] = 255;
    SbusHold page;
    page.resize(1000, 600);
    page.show();
    page.refreshFromRecord();
    clickBox(child<MCheckBox>(&page, "sbus1gear_2"));
    QVERIFY(!child<MCheckBox>(&page, "sbus1gear_0")->checked());
    clickBox(child<MCheckBox>(&page, "sbus1Channel_1"));
    clickBox(child<MCheckBox>(&page, "sbus1Channel_16"));

    const QByteArray payload = page.collectPayloads().at(0);
    QCOMPARE(payload.toHex(),
        QByteArray("0000000000000180"
                   "01ff000000000000"));

    // Position 1, then back to 2: the channels of 2 are still there.
    clickBox(child<MCheckBox>(&page, "sbus1gear_1"));
    QVERIFY(!child<MCheckBox>(&page, "sbus1Channel_1")->checked());
    clickBox(child<MCheckBox>(&page, "sbus1gear_2"));
    QVERIFY(child<MCheckBox>(&page, "sbus1Channel_16")->checked());

    // The unit's answer of the same bytes shows the same page.
    SbusHold other;
    other.slot_information(ChannelHoldData, payload);
    QCOMPARE(child<QComboBox>(&other, "sbus1")->currentText(), QStringLiteral("SA"));
    QCOMPARE(child<QComboBox>(&other, "sbus2")->currentIndex(), 0);
}

// An answer carries its own fields only; the user's edits of the others stay.
void TestSettingPages::sbusAnswerLeavesTheEditsOfOtherFields_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("answered"); // the payload the answer replaces, -1 none
    QTest::newRow("tuning") << int(SbusTuningData) << hex(kTuningAnswer) << 0;
    QTest::newRow("fixed values") << int(SbusNoneData) << hex(kFixedAnswer) << 1;
    QByteArray otherPort = hex(kTuningAnswer);
    otherPort[0] = 0;
    QTest::newRow("tuning of port 1") << int(SbusTuningData) << otherPort << -1;
    QTest::newRow("channel report") << int(ChannelDataReport) << QByteArray(64, '\x10') << -1;
}

void TestSettingPages::sbusAnswerLeavesTheEditsOfOtherFields()
{
    QFETCH(int, code);
    QFETCH(QByteArray, answer);
    QFETCH(int, answered);
    SbusConfig page;
    page.showSection(1);
    editEverySbusControl(page);
    page.slot_information(CodeID(code), answer);
    QList<QByteArray> expected { hex(kEditedSbus[0]), hex(kEditedSbus[1]) };
    if (answered >= 0)
        expected[answered] = answer;
    const QList<QByteArray> payloads = page.collectPayloads();
    QCOMPARE(payloads.at(0).toHex(), expected.at(0).toHex());
    QCOMPARE(payloads.at(1).toHex(), expected.at(1).toHex());
}

namespace
{

// Both ports of the hold page on their stored switches (SB and SA), each
// position holding channels of its own.
void editEveryHoldControl(SbusHold &page)
{
    const int held[2][3][3]
        = { { { 1, 3, 0 }, { 9, 16, 0 }, { 2, 15, 0 } }, { { 4, 0, 0 }, { 8, 10, 0 }, { 12, 13, 14 } } };
    for (int port = 1; port <= 2; ++port) {
        for (int position = 0; position < 3; ++position) {
            clickBox(child<MCheckBox>(&page, QStringLiteral("sbus%1gear_%2").arg(port).arg(position)));
            for (int channel : held[port - 1][position]) {
                if (channel)
                    clickBox(
                        child<MCheckBox>(&page, QStringLiteral("sbus%1Channel_%2").arg(port).arg(channel)));
            }
        }
    }
}

// Per port: number, switch, the masks of positions 0, 1 and 2, low byte first.
const char kEditedHold[] = "0001"
                           "0500"
                           "0081"
                           "0240"
                           "0100"
                           "0800"
                           "8002"
                           "0038";

} // namespace

void TestSettingPages::holdAnswerLeavesTheEditsOfOtherFields_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<bool>("answered");
    QTest::newRow("channel hold") << int(ChannelHoldData) << hex("00ff0000000000000100040002000100") << true;
    QTest::newRow("channel report") << int(ChannelDataReport) << QByteArray(64, '\x10') << false;
    QTest::newRow("tuning") << int(SbusTuningData) << hex(kTuningAnswer) << false;
    QTest::newRow("hold of 15 bytes")
        << int(ChannelHoldData) << hex("00ff00000000000001000400020001") << false;
}

void TestSettingPages::holdAnswerLeavesTheEditsOfOtherFields()
{
    QFETCH(int, code);
    QFETCH(QByteArray, answer);
    QFETCH(bool, answered);
    m_host.data.sbusHoldSwitch[0] = 1;
    m_host.data.sbusHoldSwitch[1] = 0;
    SbusHold page;
    page.resize(1000, 900);
    page.show();
    page.refreshFromRecord();
    editEveryHoldControl(page);
    page.slot_information(CodeID(code), answer);
    QCOMPARE(page.collectPayloads().at(0).toHex(), answered ? answer.toHex() : QByteArray(kEditedHold));
}

// A file with values no control takes, loaded and shown: the write-all sends
// the record's values (not the controls'), each held within its byte; trims
// in sign and magnitude up to 127, failsafes below the "off" byte 255, and
// the fixed values as the reader converted them and a hold switch of -1 (no
// switch), low byte as it stands.
void TestSettingPages::writeAllAfterALoadSendsTheRecordBounded()
{
    const QByteArray zeros13 = "0,0,0,0,0,0,0,0,0,0,0,0,0;";
    const QByteArray zeros16 = "0,0,0," + zeros13;
    const auto children = [](const QByteArrayList &texts) {
        const char *tags[] = { "phase", "fineTuning", "leftTrip", "rightTrip", "safeProtectionState",
            "safeProtectionValue", "channelMap", "noneValue" };
        QByteArray out;
        for (int i = 0; i < 8; ++i)
            out += QByteArray("<") + tags[i] + ">" + texts.at(i) + "</" + tags[i] + ">\r\n";
        return out;
    };
    ParameterFile::loadBytes("<body>\r\n<sbus1Default>\r\n"
            + children({ "2,0,0," + zeros13.left(24) + "-1;", "200,-150,5,-5," + zeros13.mid(2),
                "300,-5,151," + zeros13, "256,255,0," + zeros13, "1,0,1," + zeros13,
                "300,-300,255,254,40," + zeros13.mid(4), "254,300,-1,13," + zeros13.mid(2),
                "-5,133,300,-300,127," + zeros13.mid(4) })
            + "</sbus1Default>\r\n<sbus2Default>\r\n"
            + children({ zeros16, "-128,0,0," + zeros13, zeros16, zeros16, zeros16, zeros16, zeros16,
                "-5,133,-128," + zeros13 })
            + "</sbus2Default>\r\n<sbusHoldSwitch>1,-1;</sbusHoldSwitch>\r\n"
              "<sbus1-0>2,-1,0,0,0,0,0,0,0,0,0,0,0,0,0,7;</sbus1-0>\r\n"
              "<sbus2-2>0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,1;</sbus2-2>\r\n</body>\r\n",
        m_host.data);
    SbusConfig sbus;
    SbusHold hold;
    sbus.refreshFromRecord();
    hold.refreshFromRecord();
    sbus.showSection(1);
    hold.show();

    QByteArrayList sent;
    for (const QByteArray &payload : sbus.payloadsFromRecord() + hold.payloadsFromRecord())
        sent << payload.toHex(' ');
    const QByteArray z11 = " 00 00 00 00 00 00 00 00 00 00 00";
    const QByteArray z12 = z11 + " 00";
    const QByteArray z13 = z12 + " 00";
    const QByteArray z16 = z13 + " 00 00 00";
    QCOMPARE(sent,
        QByteArrayList({ "00 7f ff 05 85" + z12 + " ff 00 97" + z13 + " ff ff 00" + z13 + " fe fe ff fe 28"
                + z11 + " 05 00 01 80 fe ff 00 0d" + z12,
            "00 15 7b 2c 3c 7f" + z11, "01 ff" + z13 + " 00 00" + z16 + z16 + z16 + " 00 00 00 00" + z16,
            "01 85 fb 80" + z13, "00 01 03 80 00 00 00 00 01 ff 00 00 00 00 00 80" }));
}

QTEST_MAIN(TestSettingPages)
#include "tst_settingpages.moc"
