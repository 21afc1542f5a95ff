#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

#include <optional>

// What a handset model puts into its channel report: the kinds of its
// control words in report order, where its key words lie, and the length K of
// the block in front of the two SBUS outputs.
namespace Vunit
{

enum class Model { Alder, Birch, Cedar, Larch, Maple, Rowan, Willow };

enum class InputKind {
    StickAxis, // sprung stick axis, sweeps around the centre
    Twist, // twist axis of a stick
    Knob, // endless turning knob or wheel
    Dial, // thumb dial at the side of the case
    Switch, // three-way switch: 0, 600 or 1200, nothing in between
};

struct ModelSpec {
    Model model;
    QByteArray identifier; // five ASCII characters answered to 0xFF
    int block = 0; // K: control words plus key word(s)
    QVector<InputKind> controls; // report order; channel map index i = controls[i]
    QVector<int> keyWordOffsets; // byte offsets of the key words inside the block
    int keysPerWord = 0; // key lamps per key word
    int keyAttributeBytes = 12; // payload of the key attribute group (0xCA/0xCB)
};

const ModelSpec &modelSpec(Model model);
std::optional<Model> modelFromName(const QString &name);
QStringList modelNames();

} // namespace Vunit
