#include "AppPaths.h"
#include "ControlLayers.h"
#include "CtlButton.h"
#include "DeviceData.h"
#include "ModelPages.h"
#include "ModelSpec.h"
#include "PageHost.h"
#include "Rocker.h"
#include "RotaryKnob.h"
#include "SbusChannel.h"
#include "StartupRules.h"
#include "SteeringWheel.h"
#include "Switch.h"

#include <QPushButton>
#include <QSignalSpy>
#include <QTranslator>
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

// The main window's smallest size; the page fills it.
const QSize kSmallest(StartupRules::kMinimumWidth, StartupRules::kMinimumHeight);

// A report as the link hands it over, then the frame that shows it: one
// that comes soon after the last frame waits for the next.
void deliver(ModelInterface *page, const QByteArray &report)
{
    page->slot_information(ChannelDataReport, report);
    QVERIFY(QTest::qWaitFor([page] { return !page->hasPendingReport(); }, 1000));
}

} // namespace

class TestModelPages : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void reportWordsDriveTheirControls_data();
    void reportWordsDriveTheirControls();
    void reportOfWrongLengthIsIgnored_data();
    void reportOfWrongLengthIsIgnored();
    void switchesKeysAndTwistAtTheirLimits();
    void larchHasTwoKeyWords();
    void controlsPaintWhatLiesBeneathThem_data();
    void controlsPaintWhatLiesBeneathThem();
    void pageReadsInTheSmallestWindow_data();
    void pageReadsInTheSmallestWindow();
    void reportsComeInFrames();
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

// The live value of every control on the page, by "object.property".
static QVariantMap snapshot(ModelInterface *p)
{
    QVariantMap values;
    for (QWidget *w : partsOf<QWidget>(p)) {
        for (const char *property : { "m_val", "m_position", "m_z_axis_per", "m_index", "m_state" }) {
            if (w->metaObject()->indexOfProperty(property) >= 0 && !qobject_cast<SteeringWheel *>(w))
                values.insert(
                    w->objectName() + QLatin1Char('.') + QLatin1String(property), w->property(property));
        }
    }
    return values;
}

void TestModelPages::reportWordsDriveTheirControls_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("offset"); // byte of the report, from the report layout
    QTest::addColumn<int>("word"); // written there; every other word is at rest
    QTest::addColumn<QString>("value"); // the one value on the page that changes
    QTest::addColumn<QVariant>("expected");

    // 1100 gives a stick axis (1100 - 600) * 60 / 1200 = 25, a knob
    // 1100 * 100 / 1200 = 91, a dial -82 or 82, a switch 2, a bar
    // (1100 - 600) * 300 / 1200 = 125. A stick's first word is its vertical axis.
    const QPoint up(0, 25);
    const QPoint right(25, 0);
    auto row
        = [](const char *name, int model, int offset, int word, const char *value, const QVariant &expected) {
              QTest::newRow(name) << model << offset << word << QString::fromLatin1(value) << expected;
          };
    // Alder, K = 30: sticks 1-4 in bytes 0..15, knobs 16..19, switches 20..27.
    row("Alder T1 at 0", 0, 0, 1100, "T1.m_position", up);
    row("Alder T2 at 2", 0, 2, 1100, "T1.m_position", right);
    row("Alder T3 at 4", 0, 4, 1100, "T3.m_position", up);
    row("Alder T8 at 14", 0, 14, 1100, "T7.m_position", right);
    row("Alder LD at 16", 0, 16, 1100, "LD.m_position", 91);
    row("Alder RD at 18", 0, 18, 1100, "RD.m_position", 91);
    row("Alder SA at 20", 0, 20, 1100, "SA.m_index", 2);
    row("Alder SD at 26", 0, 26, 1100, "SD.m_index", 2);
    row("Alder F1 at bit 0 of 28", 0, 28, 0xFFFE, "key_F1.m_state", 1);
    row("Alder F8 at bit 7 of 28", 0, 28, 0xFF7F, "key_F8.m_state", 1);
    row("Alder SBUS 1 CH1 at 30", 0, 30, 1100, "sbus1_ch1.m_val", 125);
    row("Alder SBUS 2 CH16 at 92", 0, 92, 1100, "sbus2_ch16.m_val", 125);
    // Birch, K = 14: sticks in bytes 0..7, left dial 8..9, right dial 10..11.
    row("Birch T4 at 6", 1, 6, 1100, "T3.m_position", right);
    row("Birch left dial at 8", 1, 8, 1100, "T5.m_position", -82);
    row("Birch right dial at 10", 1, 10, 1100, "T6.m_position", 82);
    row("Birch F10 at bit 9 of 12", 1, 12, 0xFDFF, "key_F10.m_state", 1);
    row("Birch SBUS 1 CH1 at 14", 1, 14, 1100, "sbus1_ch1.m_val", 125);
    row("Birch SBUS 2 CH16 at 76", 1, 76, 1100, "sbus2_ch16.m_val", 125);
    // Cedar, K = 30: left dial 8..9, knob 1 10..11, knob 2 12..13, right dial
    // 14..15, switches 16..27.
    row("Cedar T2 at 2", 2, 2, 1100, "T1.m_position", right);
    row("Cedar left dial at 8", 2, 8, 1100, "LW.m_position", -82);
    row("Cedar knob 1 at 10", 2, 10, 1100, "LD.m_position", 91);
    row("Cedar knob 2 at 12", 2, 12, 1100, "RD.m_position", 91);
    row("Cedar right dial at 14", 2, 14, 1100, "RW.m_position", 82);
    row("Cedar SA at 16", 2, 16, 1100, "SA.m_index", 2);
    row("Cedar SF at 26", 2, 26, 1100, "SF.m_index", 2);
    row("Cedar SBUS 2 CH1 at 62", 2, 62, 1100, "sbus2_ch1.m_val", 125);
    // Larch, K = 24: two key words, at K - 2 and K - 4.
    row("Larch T1 at 0", 3, 0, 1100, "T1.m_position", up);
    row("Larch F15 at bit 14 of 22", 3, 22, 0xBFFF, "key_F15.m_state", 1);
    row("Larch R1 at bit 5 of 20", 3, 20, 0xFFDF, "key_R1.m_state", 1);
    row("Larch SBUS 1 CH1 at 24", 3, 24, 1100, "sbus1_ch1.m_val", 125);
    // Maple, K = 18: eight stick words.
    row("Maple T5 at 8", 4, 8, 1100, "T5.m_position", up);
    row("Maple T8 at 14", 4, 14, 1100, "T7.m_position", right);
    row("Maple F12 at bit 11 of 16", 4, 16, 0xF7FF, "key_F12.m_state", 1);
    row("Maple SBUS 1 CH16 at 48", 4, 48, 1100, "sbus1_ch16.m_val", 125);
    // Rowan, K = 30: sticks and twists in 0..11 (axes, then the twist of each
    // stick), knobs 12..15, switches 16..27.
    row("Rowan T2 at 2", 5, 2, 1100, "T1(T5).m_position", right);
    row("Rowan twist T5 at 4", 5, 4, 1100, "T1(T5).m_z_axis_per", 500 / 600.0);
    row("Rowan T3 at 6", 5, 6, 1100, "T3(T6).m_position", up);
    row("Rowan twist T6 at 10", 5, 10, 1100, "T3(T6).m_z_axis_per", 500 / 600.0);
    row("Rowan LD at 12", 5, 12, 1100, "LD.m_position", 91);
    row("Rowan RD at 14", 5, 14, 1100, "RD.m_position", 91);
    row("Rowan SA at 16", 5, 16, 1100, "SA.m_index", 2);
    row("Rowan SF at 26", 5, 26, 1100, "SF.m_index", 2);
    // Willow, K = 30: as Alder.
    row("Willow T3 at 4", 6, 4, 1100, "T3.m_position", up);
    row("Willow T6 at 10", 6, 10, 1100, "T5.m_position", right);
    row("Willow LD at 16", 6, 16, 1100, "LD.m_position", 91);
    row("Willow SD at 26", 6, 26, 1100, "SD.m_index", 2);
    row("Willow F9 at bit 8 of 28", 6, 28, 0xFEFF, "key_F9.m_state", 1);
    row("Willow SBUS 2 CH16 at 92", 6, 92, 1100, "sbus2_ch16.m_val", 125);
}

// Each word of the report moves its own control and no other: a control
// reading the wrong word (two swapped in the model's table) fails here.
void TestModelPages::reportWordsDriveTheirControls()
{
    QFETCH(int, model);
    QFETCH(int, offset);
    QFETCH(int, word);
    QFETCH(QString, value);
    QFETCH(QVariant, expected);
    const ModelSpec &layout = modelSpec(model);
    QScopedPointer<ModelInterface> p(page(model));

    // At rest: every control and channel word 600, no key pressed.
    QByteArray r = report(layout, {}, 0xFFFF, 0xFFFF, {});
    deliver(p.data(), r);
    QVariantMap values = snapshot(p.data());
    QVERIFY2(values.contains(value), qPrintable(value));

    r[offset] = char(word & 0xFF);
    r[offset + 1] = char(word >> 8);
    deliver(p.data(), r);
    const QVariantMap moved = snapshot(p.data());
    const QVariant got = moved.value(value);
    if (expected.userType() == QMetaType::Double)
        QVERIFY2(qFuzzyCompare(got.toDouble(), expected.toDouble()), qPrintable(got.toString()));
    else
        QCOMPARE(got, expected);
    values[value] = got;
    QCOMPARE(moved, values); // nothing else moved
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
    deliver(p.data(), r);
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
    deliver(p.data(), report(layout, words, 0xFFFE, 0xFFFF, {}));
    QCOMPARE(p->findChild<Switch *>("SA")->index(), 0);
    QCOMPARE(p->findChild<Switch *>("SB")->index(), 1);
    QCOMPARE(p->findChild<Switch *>("SC")->index(), 2);
    QCOMPARE(p->findChild<Switch *>("SF")->index(), 2);
    QCOMPARE(p->findChild<Rocker *>("T1(T5)")->zAxisPer(), -1.0);
    QCOMPARE(p->findChild<Rocker *>("T3(T6)")->zAxisPer(), 1.0);
    QCOMPARE(p->findChild<RotaryKnob *>("RD")->position(), 100);

    // A twist word far out of range leaves the twist where it was.
    QVector<int> wild = words;
    wild[2] = 65535;
    deliver(p.data(), report(layout, wild, 0xFFFF, 0xFFFF, {}));
    QCOMPARE(p->findChild<Rocker *>("T1(T5)")->zAxisPer(), -1.0);
}

void TestModelPages::larchHasTwoKeyWords()
{
    const ModelSpec &layout = modelSpec(3);
    QScopedPointer<ModelInterface> p(page(3));
    // First word (at K - 2): F1 pressed. Second word (at K - 4): pad up and centre, R4.
    deliver(p.data(), report(layout, {}, 0xFFFE, quint16(~(1u | 1u << 4 | 1u << 8)), {}));
    QCOMPARE(p->findChild<CtlButton *>("key_F1")->state(), 1);
    QCOMPARE(p->findChild<CtlButton *>("key_F15")->state(), 0);
    QCOMPARE(p->findChild<CtlButton *>("key_R4")->state(), 1);
    QCOMPARE(p->findChild<CtlButton *>("key_R1")->state(), 0);
    auto *pad = partsOf<SteeringWheel>(p.data()).first();
    QVERIFY(pad->m_up && pad->m_centre);
    QVERIFY(!pad->m_left && !pad->m_down && !pad->m_right);
    QCOMPARE(pad->state(), 1);
}

void TestModelPages::controlsPaintWhatLiesBeneathThem_data()
{
    QTest::addColumn<int>("model");
    for (int m = 0; m < kModelCount; ++m)
        QTest::newRow(qPrintable(modelSpec(m).identifier)) << m;
}

// The controls paint the page's picture beneath them themselves (so that a
// live report does not repaint the page): the page must look exactly as with
// transparent controls, also after a resize has moved every control and a
// report has changed every lamp.
void TestModelPages::controlsPaintWhatLiesBeneathThem()
{
    QFETCH(int, model);
    QScopedPointer<ModelInterface> p(page(model));
    QVector<int> words;
    for (int i = 0; i < 16; ++i)
        words << 100 + 70 * i;
    deliver(p.data(), report(modelSpec(model), words, 0x5555, 0xAAAA, {}));
    p->grab();
    p->resize(kSmallest);
    p->grab();
    // Every lamp and pad direction changes: no control may show a look it kept.
    deliver(p.data(), report(modelSpec(model), words, 0xAAAA, 0x5555, {}));
    const QImage opaque = p->grab().toImage();
    for (QWidget *control : partsOf<QWidget>(p.data()))
        ControlLayers::setBackdrop(control, QPixmap());
    QCOMPARE(p->grab().toImage(), opaque);
}

void TestModelPages::pageReadsInTheSmallestWindow_data()
{
    controlsPaintWhatLiesBeneathThem_data();
}

// In the main window's smallest size no control covers another, switch
// names stay apart, and the calibration text ends before the channel
// configuration button; that button is as high as its text needs. The
// English button texts are the longer ones.
void TestModelPages::pageReadsInTheSmallestWindow()
{
    QFETCH(int, model);
    const ModelSpec &layout = modelSpec(model);
    QTranslator english;
    QVERIFY(english.load(QStringLiteral(QM_APP_DIR "/translations/english.qm")));
    QCoreApplication::installTranslator(&english);
    QScopedPointer<ModelInterface> p(page(model));
    QCoreApplication::removeTranslator(&english);
    QCOMPARE(p->findChild<QPushButton *>("channelListen")->text(), QStringLiteral("Channel Config"));
    QFile sheet(QStringLiteral(QM_APP_DIR "/config/StyleSheets.qss"));
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    p->setStyleSheet(QString::fromUtf8(sheet.readAll()));
    p->resize(kSmallest);
    p->grab();

    const QList<QWidget *> shown = [&p] {
        QList<QWidget *> list;
        for (QWidget *w : partsOf<QWidget>(p.data()))
            if (!w->isHidden())
                list << w;
        return list;
    }();
    for (int i = 0; i < shown.size(); ++i) {
        QVERIFY2(p->rect().contains(shown[i]->geometry()), qPrintable(shown[i]->objectName()));
        for (int j = i + 1; j < shown.size(); ++j)
            QVERIFY2(!shown[i]->geometry().intersects(shown[j]->geometry()),
                qPrintable(shown[i]->objectName() + " / " + shown[j]->objectName()));
    }
    const QFontMetrics fm(p->font());
    for (Switch *lever : partsOf<Switch>(p.data()))
        QVERIFY2(fm.horizontalAdvance(lever->objectName()) < lever->width(), qPrintable(lever->objectName()));

    QFont bold = p->font();
    bold.setBold(true);
    const auto *calibration = p->findChild<QPushButton *>("channelCalibration");
    const auto *listen = p->findChild<QPushButton *>("channelListen");
    const int textEnd = calibration->geometry().right() + 1 + 5
        + QFontMetrics(bold).horizontalAdvance(layout.calibrationText);
    QVERIFY2(textEnd < listen->x(), qPrintable(QString::number(textEnd)));
    QVERIFY(listen->height() >= listen->sizeHint().height());
}

// Reports come 50 a second; the page draws at most one frame per 30 ms, each
// with the newest report, and the last report of a burst is never lost.
void TestModelPages::reportsComeInFrames()
{
    const ModelSpec &layout = modelSpec(0);
    QScopedPointer<ModelInterface> p(page(0));
    auto *bar = p->findChild<SbusChannel *>("sbus1_ch1");
    QVERIFY(bar);
    const auto withChannel = [&layout](int value) {
        QVector<int> sbus(32, 600);
        sbus[0] = value;
        return report(layout, {}, 0xFFFF, 0xFFFF, sbus);
    };
    p->slot_information(ChannelDataReport, withChannel(100));
    const int first = bar->val();
    p->slot_information(ChannelDataReport, withChannel(1100));
    p->slot_information(ChannelDataReport, withChannel(800));
    QVERIFY(p->hasPendingReport());
    QCOMPARE(bar->val(), first); // not yet drawn
    QTRY_VERIFY_WITH_TIMEOUT(!p->hasPendingReport(), 1000);
    const int last = bar->val();
    QVERIFY(last != first);
    deliver(p.data(), withChannel(1100));
    QVERIFY(bar->val() != last); // the burst showed its last report, not its middle one
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
    // The Alder page alone starts with its SBUS 1 bars full.
    QCOMPARE(p->findChild<SbusChannel *>("sbus1_ch1")->val(), 150);
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
