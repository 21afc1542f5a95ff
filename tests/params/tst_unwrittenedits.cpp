#include "DeviceData.h"
#include "UnwrittenEdits.h"

#include <QtTest>

using namespace UnwrittenEdits;

namespace
{
constexpr int kLarch = 3;
constexpr int kAlder = 0;

// What the unit answered: values apart from zero, so that an edit back to
// zero or a swapped field shows.
DeviceData unitRecord()
{
    DeviceData d;
    for (int p = 0; p < kSbusPorts; ++p) {
        for (int c = 0; c < kChannels; ++c) {
            d.fineTuning[p][c] = c - 8;
            d.leftTrip[p][c] = 100 + c;
            d.rightTrip[p][c] = 120 - c;
            d.safeProtectionValue[p][c] = kFailsafeOff;
            d.channelMap[p][c] = c;
            d.noneValue[p][c] = 3 * c - 20;
        }
    }
    d.safeProtectionValue[0][2] = 40; // after an answer: the magnitude ...
    d.safeProtectionState[0][2] = 1; // ... and the sign apart
    d.throttleIndex = 2;
    d.throttleData = 1;
    d.throttleDataValues[0] = 20;
    d.throttleDataValues[1] = 1.5;
    d.throttleDataValues[2] = 4;
    d.sbusOutput[0] = 1;
    d.keyGear[16] = 2;
    d.baud = 115200;
    return d;
}
} // namespace

class TestUnwrittenEdits : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void differingFields_data();
    void differingFields();
    void answersNameTheirGroup_data();
    void answersNameTheirGroup();
    void discardBringsBackOnlyTheGroupsGiven();
};

enum Edit {
    FailsafeCollectedSigned,
    FailsafeSignFlipped,
    TrimOfPort2,
    PhaseAndMap,
    SpeedFinerThanTheUnitKeeps,
    HoldValueSign,
    KeyKindOfKey17,
    HoldChannel,
    SbusOutput2,
    CanOutput,
    UnarmedThrottleCleared,
    UnarmedHoldCleared,
};

void TestUnwrittenEdits::differingFields_data()
{
    QTest::addColumn<int>("edit");
    QTest::addColumn<uint>("groups");
    QTest::addColumn<int>("model");
    QTest::addColumn<QStringList>("keys");

    QTest::newRow("failsafe held signed after a collect is no edit")
        << int(FailsafeCollectedSigned) << uint(kSbusPort1) << kAlder << QStringList {};
    QTest::newRow("failsafe with its sign flipped")
        << int(FailsafeSignFlipped) << uint(kSbusPort1) << kAlder << QStringList { "failsafe/0/2" };
    QTest::newRow("port 2 trim, port 1 compared")
        << int(TrimOfPort2) << uint(kSbusPort1) << kAlder << QStringList {};
    QTest::newRow("port 2 trim, port 2 compared")
        << int(TrimOfPort2) << uint(kSbusPort2) << kAlder << QStringList { "fineTuning/1/5" };
    QTest::newRow("phase of channel 16 and map NONE of channel 1")
        << int(PhaseAndMap) << uint(kSbusPort1) << kAlder << QStringList { "channelMap/0/0", "phase/0/15" };
    QTest::newRow("speed finer than the unit keeps")
        << int(SpeedFinerThanTheUnitKeeps) << uint(ThrottleHold) << kAlder << QStringList {};
    QTest::newRow("hold value with the other sign")
        << int(HoldValueSign) << uint(ThrottleHold) << kAlder << QStringList { "throttleValue/0" };
    QTest::newRow("key 17 kind on a Larch")
        << int(KeyKindOfKey17) << uint(KeyKinds) << kLarch << QStringList { "keyGear/16" };
    QTest::newRow("key 17 kind is not written by an Alder")
        << int(KeyKindOfKey17) << uint(KeyKinds) << kAlder << QStringList {};
    QTest::newRow("held channel 16 of port 2 in position 2")
        << int(HoldChannel) << uint(ChannelHold) << kAlder << QStringList { "sbusHold/1/2/15" };
    QTest::newRow("group the unit never answered") << int(HoldChannel) << uint(0) << kAlder << QStringList {};
    QTest::newRow("SBUS 2 output switched on")
        << int(SbusOutput2) << uint(kComprehensive) << kAlder << QStringList { "sbusOutput/1" };
    QTest::newRow("throttle hold without a switch: mode and value cleared are no edit")
        << int(UnarmedThrottleCleared) << uint(ThrottleHold) << kAlder << QStringList { "throttleValue/1" };
    QTest::newRow("channel hold without a switch: channels cleared are no edit")
        << int(UnarmedHoldCleared) << uint(ChannelHold) << kAlder << QStringList {};
    QTest::newRow("CAN output switched on")
        << int(CanOutput) << uint(kCustomOutput) << kAlder << QStringList { "CANEnable" };
}

void TestUnwrittenEdits::differingFields()
{
    QFETCH(int, edit);
    QFETCH(uint, groups);
    QFETCH(int, model);
    QFETCH(QStringList, keys);

    DeviceData unit = unitRecord();
    DeviceData shown = unit;
    switch (Edit(edit)) {
    case FailsafeCollectedSigned:
        shown.safeProtectionValue[0][2] = -40;
        break;
    case FailsafeSignFlipped:
        shown.safeProtectionValue[0][2] = 40;
        shown.safeProtectionState[0][2] = 0;
        break;
    case TrimOfPort2:
        shown.fineTuning[1][5] = -12;
        break;
    case PhaseAndMap:
        shown.phase[0][15] = 1;
        shown.channelMap[0][0] = kChannelMapNone;
        break;
    case SpeedFinerThanTheUnitKeeps:
        shown.throttleDataValues[1] = 1.53;
        break;
    case HoldValueSign:
        shown.throttleDataValues[0] = -20;
        break;
    case KeyKindOfKey17:
        shown.keyGear[16] = 0;
        break;
    case HoldChannel:
        shown.sbusHold[1][2][15] = 1;
        break;
    case SbusOutput2:
        shown.sbusOutput[1] = 1;
        break;
    case CanOutput:
        shown.CANEnable = true;
        break;
    case UnarmedThrottleCleared: {
        // The unit keeps a mode and a value behind "no switch"; the page
        // clears both, and the user changed the recovery speed.
        unit.throttleIndex = kNoSelection;
        shown.throttleIndex = kNoSelection;
        shown.throttleData = 2;
        shown.throttleDataValues[0] = 0;
        shown.throttleDataValues[1] = 2.5;
        break;
    }
    case UnarmedHoldCleared: {
        unit.sbusHoldSwitch[1] = kNoSelection;
        unit.sbusHold[1][2][3] = 1;
        shown.sbusHoldSwitch[1] = kNoSelection;
        break;
    }
    }
    QStringList got = differing(shown, unit, groups, model).values();
    got.sort();
    QCOMPARE(got, keys);
}

void TestUnwrittenEdits::answersNameTheirGroup_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<uint>("group");

    QTest::newRow("SBUS tuning of port 2") << 0xA3 << QByteArray(85, '\1') << uint(SbusTuning2);
    QTest::newRow("SBUS fixed values of port 1") << 0xA7 << QByteArray(17, '\0') << uint(SbusNone1);
    QTest::newRow("channel hold") << 0xB4 << QByteArray(16, '\0') << uint(ChannelHold);
    QTest::newRow("low-voltage alarm") << 0xEB << QByteArray(2, '\7') << uint(LowVoltage);
    QTest::newRow("module power switch") << 0x38 << QByteArray(2, '\0') << uint(ModulePhysical);
    QTest::newRow("a channel report is no group") << 0xA5 << QByteArray(64, '\0') << uint(0);
}

void TestUnwrittenEdits::answersNameTheirGroup()
{
    QFETCH(int, code);
    QFETCH(QByteArray, payload);
    QFETCH(uint, group);
    QCOMPARE(uint(groupOfAnswer(quint8(code), payload)), group);
}

void TestUnwrittenEdits::discardBringsBackOnlyTheGroupsGiven()
{
    const DeviceData unit = unitRecord();
    DeviceData shown = unit;
    shown.fineTuning[0][3] = 55;
    shown.fineTuning[1][3] = -66;
    shown.safeProtectionValue[0][2] = kFailsafeOff;
    shown.throttleDataValues[0] = -90;

    copyGroups(unit, shown, SbusTuning1 | ThrottleHold, kAlder);
    QCOMPARE(shown.fineTuning[0][3], -5);
    QCOMPARE(shown.safeProtectionValue[0][2], 40);
    QCOMPARE(shown.safeProtectionState[0][2], 1);
    QCOMPARE(shown.throttleDataValues[0], 20.0);
    QCOMPARE(shown.fineTuning[1][3], -66); // port 2 was not given
    QVERIFY(differing(shown, unit, SbusTuning1 | ThrottleHold, kAlder).isEmpty());
}

QTEST_MAIN(TestUnwrittenEdits)
#include "tst_unwrittenedits.moc"
