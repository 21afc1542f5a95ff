#include "AppPaths.h"
#include "CtlButton.h"
#include "DeviceData.h"
#include "Dial.h"
#include "ModelPages.h"
#include "ModelSpec.h"
#include "PageHost.h"
#include "Rocker.h"
#include "RotaryKnob.h"
#include "SbusChannel.h"
#include "SteeringWheel.h"
#include "Switch.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QtTest>

namespace {

struct TestHost : PageHost {
    DeviceData data;
    int hubShown = 0;
    DeviceData &deviceData() override { return data; }
    int currentModel() const override { return 0; }
    QString dialogStyleSheet() const override { return QString(); }
    void showHub() override { ++hubShown; }
    void showModelPage() override {}
};

// A report of K + 64 bytes: control words, key word(s), then SBUS 1 and SBUS 2.
QByteArray report(const ModelSpec &layout, const QVector<int> &words, quint16 keys0, quint16 keys1,
                  const QVector<int> &sbus)
{
    QByteArray r(layout.k + 64, '\0');
    auto put = [&r](int at, int v) {
        r[at] = char(v & 0xFF);
        r[at + 1] = char((v >> 8) & 0xFF);
    };
    const int controlWords = (layout.k - 2 * layout.keyWords) / 2;
    for (int i = 0; i < controlWords; ++i)
        put(2 * i, words.value(i, 600));
    put(layout.k - 2, keys0);
    if (layout.keyWords == 2)
        put(layout.k - 4, keys1);
    for (int ch = 0; ch < 32; ++ch)
        put(layout.k + 2 * ch, sbus.value(ch, 600));
    return r;
}

ModelInterface *page(int model)
{
    ModelInterface *p = createModelPage(model, nullptr);
    p->resize(1280, 760);
    return p;
}

template<typename T>
QList<T *> partsOf(ModelInterface *p)
{
    return p->findChildren<T *>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

class TestModelPages : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void everyModelHasItsClassAndControls_data();
    void everyModelHasItsClassAndControls();
    void liveReportMovesEveryControl_data();
    void liveReportMovesEveryControl();
    void reportOfWrongLengthIsIgnored_data();
    void reportOfWrongLengthIsIgnored();
    void switchesKeysAndTwistAtTheirLimits();
    void larchHasTwoKeyWords();
    void calibrationFollowsTheUnitsAnswers();
    void calibrationButtonAppearsOnDoubleClick();
    void channelConfigurationOpensTheHub();

private:
    TestHost m_host;
};

void TestModelPages::initTestCase()
{
    AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
    registerCodeIdMetaType();
}

void TestModelPages::everyModelHasItsClassAndControls_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<int>("lamps");
    QTest::addColumn<int>("switches");
    QTest::addColumn<int>("sticks");
    QTest::addColumn<int>("knobs");
    QTest::addColumn<int>("dials");
    QTest::newRow("Alder") << 0 << QByteArray("AlderInterface") << 8 << 4 << 4 << 2 << 0;
    QTest::newRow("Birch") << 1 << QByteArray("BirchInterface") << 10 << 0 << 2 << 0 << 2;
    QTest::newRow("Cedar") << 2 << QByteArray("CedarInterface") << 8 << 6 << 2 << 2 << 2;
    QTest::newRow("Larch") << 3 << QByteArray("LarchInterface") << 19 << 0 << 2 << 1 << 2;
    QTest::newRow("Maple") << 4 << QByteArray("MapleInterface") << 12 << 0 << 4 << 0 << 0;
    QTest::newRow("Rowan") << 5 << QByteArray("RowanInterface") << 12 << 6 << 2 << 2 << 0;
    QTest::newRow("Willow") << 6 << QByteArray("WillowInterface") << 10 << 4 << 4 << 2 << 0;
}

void TestModelPages::everyModelHasItsClassAndControls()
{
    QFETCH(int, model);
    QFETCH(QByteArray, className);
    QFETCH(int, lamps);
    QFETCH(int, switches);
    QFETCH(int, sticks);
    QFETCH(int, knobs);
    QFETCH(int, dials);
    QScopedPointer<ModelInterface> p(page(model));
    QCOMPARE(QByteArray(p->metaObject()->className()), className);
    QCOMPARE(partsOf<CtlButton>(p.data()).size(), lamps);
    QCOMPARE(partsOf<Switch>(p.data()).size(), switches);
    QCOMPARE(partsOf<Rocker>(p.data()).size(), sticks);
    QCOMPARE(partsOf<RotaryKnob>(p.data()).size(), knobs);
    QCOMPARE(partsOf<Dial>(p.data()).size(), dials);
    QCOMPARE(partsOf<SbusChannel>(p.data()).size(), 32);
    for (Rocker *r : partsOf<Rocker>(p.data()))
        QCOMPARE(r->radius(), 10);
    // Rowan's sticks carry the twist axis.
    for (Rocker *r : partsOf<Rocker>(p.data()))
        QCOMPARE(r->isZAxis(), model == 5);
    QCOMPARE(partsOf<SteeringWheel>(p.data()).size(), model == 3 ? 1 : 0);

    // Only the Alder page starts with its SBUS 1 bars full.
    QCOMPARE(p->findChild<SbusChannel *>("sbus1_ch1")->val(), model == 0 ? 150 : 0);
    QCOMPARE(p->findChild<SbusChannel *>("sbus2_ch16")->val(), 0);
    QCOMPARE(p->findChild<QPushButton *>("channelCalibration")->text(), QStringLiteral("遥杆校准"));
    QVERIFY(p->findChild<QPushButton *>("channelCalibration")->isHidden());
    QCOMPARE(p->findChild<QPushButton *>("channelListen")->text(), QStringLiteral("通道配置"));
}

void TestModelPages::liveReportMovesEveryControl_data()
{
    QTest::addColumn<int>("model");
    for (int m = 0; m < kModelCount; ++m)
        QTest::newRow(qPrintable(modelSpec(m).identifier)) << m;
}

// Every control follows its word of the report with the unit's scaling.
void TestModelPages::liveReportMovesEveryControl()
{
    QFETCH(int, model);
    const ModelSpec &layout = modelSpec(model);
    QScopedPointer<ModelInterface> p(page(model));

    QVector<int> words;
    for (int i = 0; i < 16; ++i)
        words << 100 + 70 * i; // 100, 170, ... all different, all below 1200
    QVector<int> sbus;
    for (int ch = 0; ch < 32; ++ch)
        sbus << (ch * 37) % 1201;
    sbus[0] = 0;
    sbus[1] = 1200;
    sbus[2] = 601;
    p->slot_information(ChannelDataReport, report(layout, words, 0xFFFF, 0xFFFF, sbus));

    for (int ch = 0; ch < 32; ++ch) {
        const QString name = QStringLiteral("sbus%1_ch%2").arg(ch / 16 + 1).arg(ch % 16 + 1);
        QCOMPARE(p->findChild<SbusChannel *>(name)->val(), (sbus[ch] - 600) * 300 / 1200);
    }
    QCOMPARE(p->findChild<SbusChannel *>("sbus1_ch1")->val(), -150);
    QCOMPARE(p->findChild<SbusChannel *>("sbus1_ch2")->val(), 150);
    QCOMPARE(p->findChild<SbusChannel *>("sbus1_ch3")->val(), 0);

    for (const PartSpec &part : layout.parts) {
        switch (part.kind) {
        case PartKind::Stick: {
            auto *r = p->findChild<Rocker *>(part.label);
            QVERIFY2(r, qPrintable(part.label));
            QCOMPARE(r->position(), QPoint((words[part.word2] - 600) * 60 / 1200, (words[part.word] - 600) * 60 / 1200));
            if (part.word3 >= 0)
                QCOMPARE(r->zAxisPer(), (words[part.word3] - 600) / 600.0);
            break;
        }
        case PartKind::Knob:
            QCOMPARE(p->findChild<RotaryKnob *>(part.label)->position(), words[part.word] * 100 / 1200);
            break;
        case PartKind::LeftDial:
            QCOMPARE(p->findChild<Dial *>(part.label)->position(), words[part.word] * -90 / 1200);
            break;
        case PartKind::RightDial:
            QCOMPARE(p->findChild<Dial *>(part.label)->position(), words[part.word] * 90 / 1200);
            break;
        case PartKind::Switch:
            QCOMPARE(p->findChild<Switch *>(part.label)->index(), words[part.word] < 600 ? 0 : 2);
            break;
        default:
            break;
        }
    }
    for (CtlButton *lamp : partsOf<CtlButton>(p.data()))
        QCOMPARE(lamp->state(), 0); // 0xFFFF: no key pressed
    p->slot_information(ChannelDataReport, report(layout, words, 0x0000, 0x0000, sbus));
    for (CtlButton *lamp : partsOf<CtlButton>(p.data()))
        QCOMPARE(lamp->state(), 1);
}

void TestModelPages::reportOfWrongLengthIsIgnored_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("delta");
    for (int m = 0; m < kModelCount; ++m) {
        QTest::addRow("%s one short", qPrintable(modelSpec(m).identifier)) << m << -1;
        QTest::addRow("%s one long", qPrintable(modelSpec(m).identifier)) << m << 1;
        QTest::addRow("%s empty", qPrintable(modelSpec(m).identifier)) << m << -(modelSpec(m).k + 64);
    }
}

void TestModelPages::reportOfWrongLengthIsIgnored()
{
    QFETCH(int, model);
    QFETCH(int, delta);
    QScopedPointer<ModelInterface> p(page(model));
    QByteArray r = report(modelSpec(model), QVector<int>(16, 1200), 0, 0, QVector<int>(32, 1200));
    r.resize(r.size() + delta);
    p->slot_information(ChannelDataReport, r);
    QCOMPARE(p->findChild<SbusChannel *>("sbus2_ch1")->val(), 0);
    for (Rocker *rocker : partsOf<Rocker>(p.data()))
        QCOMPARE(rocker->position(), QPoint());
    for (CtlButton *lamp : partsOf<CtlButton>(p.data()))
        QCOMPARE(lamp->state(), 0);
    // Other codes are not the page's.
    p->slot_information(SbusTuningData, report(modelSpec(model), {}, 0, 0, QVector<int>(32, 1200)));
    QCOMPARE(p->findChild<SbusChannel *>("sbus2_ch1")->val(), 0);
}

// A three-way switch reports exactly 600 in its middle position.
void TestModelPages::switchesKeysAndTwistAtTheirLimits()
{
    const ModelSpec &layout = modelSpec(5); // Rowan: switches in words 8..13, twist in 2 and 5
    QScopedPointer<ModelInterface> p(page(5));
    const QVector<int> words { 600, 600, 0, 600, 600, 1200, 0, 1200, 599, 600, 601, 0, 1200, 65535 };
    p->slot_information(ChannelDataReport, report(layout, words, 0xFFFE, 0xFFFF, {}));
    QCOMPARE(p->findChild<Switch *>("SA")->index(), 0);
    QCOMPARE(p->findChild<Switch *>("SB")->index(), 1);
    QCOMPARE(p->findChild<Switch *>("SC")->index(), 2);
    QCOMPARE(p->findChild<Switch *>("SF")->index(), 2);
    QCOMPARE(p->findChild<Rocker *>("T1(T5)")->zAxisPer(), -1.0);
    QCOMPARE(p->findChild<Rocker *>("T3(T6)")->zAxisPer(), 1.0);
    QCOMPARE(p->findChild<RotaryKnob *>("LD")->position(), 0);
    QCOMPARE(p->findChild<RotaryKnob *>("RD")->position(), 100);
    QCOMPARE(p->findChild<CtlButton *>("key_F1")->state(), 1);
    QCOMPARE(p->findChild<CtlButton *>("key_F2")->state(), 0);

    // A twist word far out of range leaves the twist where it was.
    QVector<int> wild = words;
    wild[2] = 65535;
    p->slot_information(ChannelDataReport, report(layout, wild, 0xFFFF, 0xFFFF, {}));
    QCOMPARE(p->findChild<Rocker *>("T1(T5)")->zAxisPer(), -1.0);
}

void TestModelPages::larchHasTwoKeyWords()
{
    const ModelSpec &layout = modelSpec(3);
    QScopedPointer<ModelInterface> p(page(3));
    // First word (at K - 2): F1 pressed. Second word (at K - 4): pad up and centre, R4.
    p->slot_information(ChannelDataReport, report(layout, {}, 0xFFFE, quint16(~(1u | 1u << 4 | 1u << 8)), {}));
    QCOMPARE(p->findChild<CtlButton *>("key_F1")->state(), 1);
    QCOMPARE(p->findChild<CtlButton *>("key_F15")->state(), 0);
    QCOMPARE(p->findChild<CtlButton *>("key_R4")->state(), 1);
    QCOMPARE(p->findChild<CtlButton *>("key_R1")->state(), 0);
    auto *pad = partsOf<SteeringWheel>(p.data()).first();
    QVERIFY(pad->m_up && pad->m_centre);
    QVERIFY(!pad->m_left && !pad->m_down && !pad->m_right);
    QCOMPARE(pad->state(), 1);
}

void TestModelPages::calibrationFollowsTheUnitsAnswers()
{
    QScopedPointer<ModelInterface> p(page(2));
    QSignalSpy start(p.data(), &ModelInterface::signal_startupCalibration);
    QSignalSpy finish(p.data(), &ModelInterface::signal_finishCalibration);
    auto *button = p->findChild<QPushButton *>("channelCalibration");
    button->show();

    // Without an answer the page stays where it was: a second click asks again.
    button->click();
    button->click();
    QCOMPARE(start.count(), 2);
    QCOMPARE(finish.count(), 0);

    p->slot_information(CalibrationStarted, QByteArray("x")); // wrong length
    QVERIFY(!p->isCalibrating());
    p->slot_information(CalibrationStarted, QByteArray());
    QVERIFY(p->isCalibrating());
    QCOMPARE(button->text(), QStringLiteral("完成校准"));
    button->click();
    QCOMPARE(finish.count(), 1);
    QCOMPARE(start.count(), 2);

    p->slot_information(CalibrationFinished, QByteArray::fromHex("0001"));
    QVERIFY(p->isCalibrating());
    // A failed finish (the single byte 0xEE) ends the calibration display too.
    p->slot_information(CalibrationFinished, QByteArray::fromHex("ee"));
    QVERIFY(!p->isCalibrating());
    QCOMPARE(button->text(), QStringLiteral("遥杆校准"));
}

void TestModelPages::calibrationButtonAppearsOnDoubleClick()
{
    QScopedPointer<ModelInterface> p(page(0));
    p->show();
    QVERIFY(QTest::qWaitForWindowExposed(p.data()));
    p->grab(); // lays the page out
    auto *button = p->findChild<QPushButton *>("channelCalibration");
    QTest::mouseDClick(p.data(), Qt::LeftButton, Qt::NoModifier, QPoint(600, 400));
    QVERIFY(button->isHidden());
    QTest::mouseDClick(p.data(), Qt::LeftButton, Qt::NoModifier, QPoint(8, 14));
    QVERIFY(!button->isHidden());
    QCOMPARE(button->geometry().topLeft(), QPoint(5, 10));
}

void TestModelPages::channelConfigurationOpensTheHub()
{
    QScopedPointer<ModelInterface> p(page(4));
    p->show();
    m_host.hubShown = 0;
    p->findChild<QPushButton *>("channelListen")->click();
    QCOMPARE(m_host.hubShown, 1);
    QVERIFY(p->isHidden());
}

QTEST_MAIN(TestModelPages)
#include "tst_modelpages.moc"
