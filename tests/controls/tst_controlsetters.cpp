#include "ControlFactory.h"

#include <QtTest>

#include <memory>

namespace
{
struct Preset {
    QByteArray property;
    QVariant value;
};
using Presets = QVector<Preset>;
} // namespace
Q_DECLARE_METATYPE(Presets)

// The setter rules of the drawn controls, driven through the Qt property
// system so that the property names the pages and forms use are checked too.
class TestControlSetters : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void setterRules_data();
    void setterRules();
};

void TestControlSetters::setterRules_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<Presets>("presets");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("input");
    QTest::addColumn<QByteArray>("readBack");
    QTest::addColumn<QVariant>("expected");

    const Presets none;
    auto row = [](const char *name, const QString &control, const Presets &presets, const char *property,
                   const QVariant &input, const char *readBack, const QVariant &expected) {
        QTest::newRow(name) << control << presets << QByteArray(property) << input
                            << QByteArray(readBack ? readBack : property) << expected;
    };
    const QString sbus = QStringLiteral("SbusChannel");
    row("bar clamps 200 to 150", sbus, none, "m_val", 200, nullptr, 150);
    row("bar clamps -151 to -150", sbus, none, "m_val", -151, nullptr, -150);
    row("bar hold marker is not clamped", sbus, none, "m_hold", 400, nullptr, 400);

    // Switch compares unsigned, PhaseSwitch signed.
    const QString sw = QStringLiteral("Switch");
    row("switch ignores -1", sw, { { "m_index", 0 } }, "m_index", -1, nullptr, 0);
    row("switch ignores 3", sw, { { "m_index", 2 } }, "m_index", 3, nullptr, 2);
    row("switch takes 0", sw, none, "m_index", 0, nullptr, 0);
    const QString phase = QStringLiteral("PhaseSwitch");
    row("phase stores -5", phase, none, "m_index", -5, nullptr, -5);
    row("phase ignores 2", phase, { { "m_index", 1 } }, "m_index", 2, nullptr, 1);
    row("phase takes 0", phase, { { "m_index", 1 } }, "m_index", 0, nullptr, 0);

    const QString rocker = QStringLiteral("Rocker");
    row("stick (40,-50) clamps to (30,-30)", rocker, none, "m_position", QPoint(40, -50), nullptr,
        QPoint(30, -30));
    row("stick clamps each axis alone", rocker, none, "m_position", QPoint(-31, 12), nullptr,
        QPoint(-30, 12));
    row("twist 1.5 ignored", rocker, none, "m_z_axis_per", 1.5, nullptr, 0.0);
    row("twist -1.0 kept", rocker, { { "m_z_axis_per", 0.5 } }, "m_z_axis_per", -1.0, nullptr, -1.0);
    row("twist -1.0001 ignored", rocker, { { "m_z_axis_per", 0.5 } }, "m_z_axis_per", -1.0001, nullptr, 0.5);
    row("twist NaN ignored", rocker, { { "m_z_axis_per", 0.5 } }, "m_z_axis_per", qQNaN(), nullptr, 0.5);

    const QString dial = QStringLiteral("Dial");
    row("left dial 45 clamps to 0", dial, none, "m_position", 45, nullptr, 0);
    row("left dial -91 clamps to -90", dial, none, "m_position", -91, nullptr, -90);
    row("right dial -10 clamps to 0", dial, { { "m_direction", 1 } }, "m_position", -10, nullptr, 0);
    row("right dial 91 clamps to 90", dial, { { "m_direction", 1 } }, "m_position", 91, nullptr, 90);

    const QString knob = QStringLiteral("RotaryKnob");
    row("knob 150 clamps to 100", knob, none, "m_position", 150, nullptr, 100);
    row("knob -1 clamps to 0", knob, none, "m_position", -1, nullptr, 0);

    const QString spin = QStringLiteral("MSpinBox");
    row("decimals 5 stores 2", spin, none, "m_decimal", 5, nullptr, 2);
    row("decimals -1 stores 0", spin, none, "m_decimal", -1, nullptr, 0);
    row("value 200 clamps to 150", spin, none, "m_currentValue", 200.0, nullptr, 150.0);
    row("value below 0 clamps to 0", spin, none, "m_currentValue", -0.5, nullptr, 0.0);
    row("value clamps to a negative bound", spin, { { "m_minValue", -100.0 } }, "m_currentValue", -150.0,
        nullptr, -100.0);
    row("lower max does not re-clamp", spin, { { "m_currentValue", 120.0 } }, "m_maxValue", 50.0,
        "m_currentValue", 120.0);
    row("higher min does not re-clamp", spin, { { "m_currentValue", 10.0 } }, "m_minValue", 20.0,
        "m_currentValue", 10.0);
    // With crossed bounds the upper one is tested first.
    row("crossed bounds: high value gets max", spin, { { "m_minValue", 10.0 }, { "m_maxValue", 5.0 } },
        "m_currentValue", 7.0, nullptr, 5.0);
    row("crossed bounds: low value gets min", spin, { { "m_minValue", 10.0 }, { "m_maxValue", 5.0 } },
        "m_currentValue", 3.0, nullptr, 10.0);
    row("NaN keeps the value", spin, { { "m_currentValue", 42.0 } }, "m_currentValue", qQNaN(), nullptr,
        42.0);
}

void TestControlSetters::setterRules()
{
    QFETCH(QString, control);
    QFETCH(Presets, presets);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, input);
    QFETCH(QByteArray, readBack);
    QFETCH(QVariant, expected);

    std::unique_ptr<QWidget> w(makeControl(control));
    QVERIFY(w);
    for (const Preset &p : presets)
        QVERIFY2(w->setProperty(p.property.constData(), p.value), p.property.constData());
    QVERIFY2(w->setProperty(property.constData(), input), property.constData());
    const QVariant actual = w->property(readBack.constData());
    if (expected.userType() == QMetaType::Double)
        QCOMPARE(actual.toDouble(), expected.toDouble());
    else
        QCOMPARE(actual, expected);
}

QTEST_MAIN(TestControlSetters)
#include "tst_controlsetters.moc"
