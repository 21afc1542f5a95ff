#include "ModelSpec.h"

#include <array>

namespace {

PartSpec part(PartKind kind, const QRectF &place)
{
    PartSpec p;
    p.kind = kind;
    p.place = place;
    return p;
}

ModelSpec model(const char *identifier, int k, int keyWords, const char *calibrationText)
{
    ModelSpec m;
    m.identifier = QLatin1String(identifier);
    m.k = k;
    m.keyWords = keyWords;
    m.calibrationText = QLatin1String(calibrationText);
    return m;
}

PartSpec stick(const QRectF &place, int vertical, int horizontal, const QString &vLabel, const QString &hLabel,
               int twist = -1)
{
    PartSpec p = part(PartKind::Stick, place);
    p.word = vertical;
    p.word2 = horizontal;
    p.word3 = twist;
    p.label = vLabel;
    p.label2 = hLabel;
    return p;
}

PartSpec single(PartKind kind, const QRectF &place, int word, const QString &label)
{
    PartSpec p = part(kind, place);
    p.word = word;
    p.label = label;
    return p;
}

PartSpec lever(const QRectF &place, int word, const QString &label, bool vertical = true)
{
    PartSpec p = single(PartKind::Switch, place, word, label);
    p.vertical = vertical;
    return p;
}

PartSpec lamps(const QRectF &place, int keyWord, int firstBit, const QStringList &captions)
{
    PartSpec p = part(PartKind::Lamps, place);
    p.keyWord = keyWord;
    p.firstBit = firstBit;
    p.captions = captions;
    return p;
}

QStringList fKeys(int first, int last)
{
    QStringList keys;
    for (int i = first; i <= last; ++i)
        keys << QStringLiteral("F%1").arg(i);
    return keys;
}

// Cedar and Rowan carry three switches on each shoulder, in words 8..13: two
// upright ones and a sideways one below them.
QVector<PartSpec> sixShoulderSwitches()
{
    return {
        lever({ 0.01, 0.02, 0.07, 0.18 }, 8, QStringLiteral("SA")),
        lever({ 0.09, 0.02, 0.07, 0.18 }, 9, QStringLiteral("SB")),
        lever({ 0.01, 0.22, 0.15, 0.10 }, 10, QStringLiteral("SC"), false),
        lever({ 0.84, 0.02, 0.07, 0.18 }, 11, QStringLiteral("SD")),
        lever({ 0.92, 0.02, 0.07, 0.18 }, 12, QStringLiteral("SE")),
        lever({ 0.84, 0.22, 0.15, 0.10 }, 13, QStringLiteral("SF"), false),
    };
}

PartSpec picture(const QRectF &place, const QString &file)
{
    PartSpec p = part(PartKind::Picture, place);
    p.picture = file;
    return p;
}

PartSpec stopFromKey(const QRectF &place, int keyWord, int bit)
{
    PartSpec p = picture(place, QString());
    p.kind = PartKind::StopLight;
    p.keyWord = keyWord;
    p.firstBit = bit;
    return p;
}

PartSpec stopFromSwitch(const QRectF &place, int switchWord)
{
    PartSpec p = picture(place, QString());
    p.kind = PartKind::StopLight;
    p.word = switchWord;
    return p;
}

// Places are fractions of the unit's picture area: shoulders on top, keys in
// the middle, the sticks where the thumbs go.

ModelSpec alder()
{
    ModelSpec m = model("ALDER", 30, 1, "Channel is being calibrated : T1  T2  T3  T4  T5  T6  T7  T8 LD RD");
    m.sbus1StartsFull = true;
    m.parts = {
        lever({ 0.02, 0.02, 0.08, 0.19 }, 10, QStringLiteral("SA")),
        lever({ 0.90, 0.02, 0.08, 0.19 }, 11, QStringLiteral("SB")),
        lever({ 0.12, 0.04, 0.17, 0.10 }, 12, QStringLiteral("SC"), false),
        lever({ 0.71, 0.04, 0.17, 0.10 }, 13, QStringLiteral("SD"), false),
        single(PartKind::Knob, { 0.32, 0.02, 0.14, 0.17 }, 8, QStringLiteral("LD")),
        single(PartKind::Knob, { 0.54, 0.02, 0.14, 0.17 }, 9, QStringLiteral("RD")),
        stick({ 0.08, 0.23, 0.25, 0.27 }, 4, 5, QStringLiteral("T5"), QStringLiteral("T6")),
        stick({ 0.67, 0.23, 0.25, 0.27 }, 6, 7, QStringLiteral("T7"), QStringLiteral("T8")),
        lamps({ 0.35, 0.25, 0.30, 0.11 }, 0, 0, fKeys(1, 4)),
        lamps({ 0.35, 0.37, 0.30, 0.11 }, 0, 4, fKeys(5, 8)),
        stick({ 0.03, 0.53, 0.42, 0.45 }, 0, 1, QStringLiteral("T1"), QStringLiteral("T2")),
        stick({ 0.55, 0.53, 0.42, 0.45 }, 2, 3, QStringLiteral("T3"), QStringLiteral("T4")),
    };
    return m;
}

ModelSpec birch()
{
    ModelSpec m = model("BIRCH", 14, 1, "Channel is being calibrated : T1  T2  T3  T4  LW  RW");
    m.parts = {
        single(PartKind::LeftDial, { 0.03, 0.03, 0.20, 0.22 }, 4, QStringLiteral("T5")),
        single(PartKind::RightDial, { 0.77, 0.03, 0.20, 0.22 }, 5, QStringLiteral("T6")),
        lamps({ 0.26, 0.05, 0.48, 0.11 }, 0, 0, fKeys(1, 5)),
        lamps({ 0.26, 0.17, 0.48, 0.11 }, 0, 5, fKeys(6, 10)),
        stick({ 0.03, 0.36, 0.44, 0.56 }, 0, 1, QStringLiteral("T1"), QStringLiteral("T2")),
        stick({ 0.53, 0.36, 0.44, 0.56 }, 2, 3, QStringLiteral("T3"), QStringLiteral("T4")),
    };
    return m;
}

ModelSpec cedar()
{
    ModelSpec m = model("CEDAR", 30, 1, "Channel is being calibrated : T1  T2  T3  T4  LD  LW  RW  RD");
    m.parts = sixShoulderSwitches();
    m.parts += {
        single(PartKind::LeftDial, { 0.18, 0.02, 0.15, 0.17 }, 4, QStringLiteral("LW")),
        single(PartKind::Knob, { 0.35, 0.02, 0.13, 0.16 }, 5, QStringLiteral("LD")),
        single(PartKind::Knob, { 0.52, 0.02, 0.13, 0.16 }, 6, QStringLiteral("RD")),
        single(PartKind::RightDial, { 0.67, 0.02, 0.15, 0.17 }, 7, QStringLiteral("RW")),
        lamps({ 0.22, 0.22, 0.56, 0.10 }, 0, 0, fKeys(1, 4)),
        lamps({ 0.22, 0.33, 0.56, 0.10 }, 0, 4, fKeys(5, 8)),
        picture({ 0.45, 0.45, 0.10, 0.10 }, QStringLiteral("/image/comeback.png")),
        stick({ 0.03, 0.50, 0.42, 0.48 }, 0, 1, QStringLiteral("T1"), QStringLiteral("T2")),
        stick({ 0.55, 0.50, 0.42, 0.48 }, 2, 3, QStringLiteral("T3"), QStringLiteral("T4")),
    };
    return m;
}

ModelSpec larch()
{
    ModelSpec m = model("LARCH", 24, 2, "Channel is being calibrated : T1 T2 LW RW R1 R2 R3 R4");
    PartSpec pad = part(PartKind::Pad, { 0.03, 0.21, 0.26, 0.29 });
    pad.keyWord = 1;
    pad.firstBit = 0;
    m.parts = {
        single(PartKind::LeftDial, { 0.02, 0.02, 0.14, 0.16 }, 4, QStringLiteral("LW")),
        lamps({ 0.17, 0.04, 0.20, 0.10 }, 1, 5, { QStringLiteral("R1"), QStringLiteral("R2") }),
        single(PartKind::Knob, { 0.39, 0.02, 0.10, 0.16 }, 6, QStringLiteral("LD")),
        stopFromKey({ 0.51, 0.02, 0.10, 0.16 }, 1, 9),
        lamps({ 0.63, 0.04, 0.20, 0.10 }, 1, 7, { QStringLiteral("R3"), QStringLiteral("R4") }),
        single(PartKind::RightDial, { 0.84, 0.02, 0.14, 0.16 }, 5, QStringLiteral("RW")),
        pad,
        lamps({ 0.33, 0.21, 0.64, 0.09 }, 0, 0, fKeys(1, 5)),
        lamps({ 0.33, 0.31, 0.64, 0.09 }, 0, 5, fKeys(6, 10)),
        lamps({ 0.33, 0.41, 0.64, 0.09 }, 0, 10, fKeys(11, 15)),
        stick({ 0.03, 0.53, 0.42, 0.45 }, 0, 1, QStringLiteral("T1"), QStringLiteral("T2")),
        stick({ 0.55, 0.53, 0.42, 0.45 }, 2, 3, QStringLiteral("T3"), QStringLiteral("T4")),
    };
    return m;
}

ModelSpec maple()
{
    ModelSpec m = model("MAPLE", 18, 1, "Channel is being calibrated : T1  T2  T3  T4  T5  T6  T7  T8");
    m.parts = {
        stick({ 0.03, 0.02, 0.27, 0.32 }, 4, 5, QStringLiteral("T5"), QStringLiteral("T6")),
        stick({ 0.70, 0.02, 0.27, 0.32 }, 6, 7, QStringLiteral("T7"), QStringLiteral("T8")),
        lamps({ 0.32, 0.03, 0.36, 0.10 }, 0, 0, fKeys(1, 4)),
        lamps({ 0.32, 0.14, 0.36, 0.10 }, 0, 4, fKeys(5, 8)),
        lamps({ 0.32, 0.25, 0.36, 0.10 }, 0, 8, fKeys(9, 12)),
        stick({ 0.03, 0.42, 0.44, 0.56 }, 0, 1, QStringLiteral("T1"), QStringLiteral("T2")),
        stick({ 0.53, 0.42, 0.44, 0.56 }, 2, 3, QStringLiteral("T3"), QStringLiteral("T4")),
    };
    return m;
}

ModelSpec rowan()
{
    ModelSpec m = model("ROWAN", 30, 1, "Channel is being calibrated : T1  T2  T3  T4  T5 T6 LD RD");
    m.parts = sixShoulderSwitches();
    m.parts += {
        single(PartKind::Knob, { 0.20, 0.02, 0.14, 0.17 }, 6, QStringLiteral("LD")),
        stopFromSwitch({ 0.44, 0.02, 0.12, 0.17 }, 13),
        single(PartKind::Knob, { 0.66, 0.02, 0.14, 0.17 }, 7, QStringLiteral("RD")),
        lamps({ 0.20, 0.23, 0.60, 0.10 }, 0, 0, fKeys(1, 6)),
        lamps({ 0.20, 0.34, 0.60, 0.10 }, 0, 6, fKeys(7, 12)),
        stick({ 0.03, 0.47, 0.44, 0.51 }, 0, 1, QStringLiteral("T1(T5)"), QStringLiteral("T2"), 2),
        stick({ 0.53, 0.47, 0.44, 0.51 }, 3, 4, QStringLiteral("T3(T6)"), QStringLiteral("T4"), 5),
    };
    return m;
}

ModelSpec willow()
{
    ModelSpec m = model("WILLO", 30, 1, "Channel is being calibrated : T1  T2  T3  T4  LD  LW  RW  RD");
    m.body = BodyShape::GroundStation;
    m.parts = {
        lever({ 0.03, 0.03, 0.08, 0.18 }, 10, QStringLiteral("SA")),
        lever({ 0.13, 0.03, 0.08, 0.18 }, 11, QStringLiteral("SB")),
        lever({ 0.79, 0.03, 0.08, 0.18 }, 12, QStringLiteral("SC")),
        lever({ 0.89, 0.03, 0.08, 0.18 }, 13, QStringLiteral("SD")),
        single(PartKind::Knob, { 0.28, 0.03, 0.14, 0.17 }, 8, QStringLiteral("LD")),
        single(PartKind::Knob, { 0.58, 0.03, 0.14, 0.17 }, 9, QStringLiteral("RD")),
        lamps({ 0.22, 0.24, 0.56, 0.10 }, 0, 0, fKeys(1, 5)),
        lamps({ 0.22, 0.35, 0.56, 0.10 }, 0, 5, fKeys(6, 10)),
        stick({ 0.02, 0.47, 0.35, 0.51 }, 0, 1, QStringLiteral("T1"), QStringLiteral("T2")),
        stick({ 0.37, 0.47, 0.26, 0.26 }, 4, 5, QStringLiteral("T5"), QStringLiteral("T6")),
        stick({ 0.37, 0.73, 0.26, 0.26 }, 6, 7, QStringLiteral("T7"), QStringLiteral("T8")),
        stick({ 0.63, 0.47, 0.35, 0.51 }, 2, 3, QStringLiteral("T3"), QStringLiteral("T4")),
    };
    return m;
}

} // namespace

const ModelSpec &modelSpec(int model)
{
    static const std::array<ModelSpec, kModelCount> specs { alder(), birch(), cedar(), larch(),
                                                            maple(), rowan(), willow() };
    return specs[size_t(qBound(0, model, kModelCount - 1))];
}
