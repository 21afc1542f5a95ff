#include "UnitSpec.h"

#include <QStringList>

namespace Vunit
{

namespace
{

QVector<InputKind> repeat(InputKind kind, int count)
{
    return QVector<InputKind>(count, kind);
}

QVector<ModelSpec> buildSpecs()
{
    using K = InputKind;
    const QVector<InputKind> fourSwitches = repeat(K::Switch, 4);
    const QVector<InputKind> sixSwitches = repeat(K::Switch, 6);

    QVector<ModelSpec> specs;
    // Alder: sticks 1-4 (two words each), two knobs, four switches.
    specs.append({ Model::Alder, "ALDER", 30, repeat(K::StickAxis, 8) + repeat(K::Knob, 2) + fourSwitches,
        { 28 }, 8, 12 });
    // Birch: two sticks, left and right dial.
    specs.append({ Model::Birch, "BIRCH", 14, repeat(K::StickAxis, 4) + repeat(K::Dial, 2), { 12 }, 10, 12 });
    // Cedar: two sticks, left dial, two knobs, right dial, six switches.
    specs.append({ Model::Cedar, "CEDAR", 30,
        repeat(K::StickAxis, 4) + QVector<InputKind> { K::Dial, K::Knob, K::Knob, K::Dial } + sixSwitches,
        { 28 }, 8, 12 });
    // Larch: two sticks, two dials, a knob and three wheels; two key words.
    specs.append({ Model::Larch, "LARCH", 24,
        repeat(K::StickAxis, 4) + repeat(K::Dial, 2) + repeat(K::Knob, 4), { 20, 22 }, 8, 24 });
    // Maple: four sticks.
    specs.append({ Model::Maple, "MAPLE", 18, repeat(K::StickAxis, 8), { 16 }, 12, 12 });
    // Rowan: two sticks with a twist axis each, two knobs, six switches.
    specs.append({ Model::Rowan, "ROWAN", 30,
        QVector<InputKind> { K::StickAxis, K::StickAxis, K::Twist, K::StickAxis, K::StickAxis, K::Twist }
            + repeat(K::Knob, 2) + sixSwitches,
        { 28 }, 12, 12 });
    // Willow ground station: four sticks, two knobs, four switches.
    specs.append({ Model::Willow, "WILLO", 30, repeat(K::StickAxis, 8) + repeat(K::Knob, 2) + fourSwitches,
        { 28 }, 10, 12 });
    return specs;
}

const QVector<ModelSpec> &specs()
{
    static const QVector<ModelSpec> all = buildSpecs();
    return all;
}

} // namespace

const ModelSpec &modelSpec(Model model)
{
    return specs().at(int(model));
}

std::optional<Model> modelFromName(const QString &name)
{
    const QString upper = name.trimmed().toUpper();
    if (upper == QLatin1String("WILLOW"))
        return Model::Willow;
    for (const ModelSpec &layout : specs()) {
        if (QString::fromLatin1(layout.identifier) == upper)
            return layout.model;
    }
    return std::nullopt;
}

QStringList modelNames()
{
    QStringList names;
    for (const ModelSpec &layout : specs())
        names << QString::fromLatin1(layout.identifier);
    return names;
}

} // namespace Vunit
