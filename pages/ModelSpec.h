#pragma once

#include <QRectF>
#include <QString>
#include <QStringList>
#include <QVector>

// What one model page shows and where its values lie in the channel report.
// The seven model pages share one design; everything that differs between
// the units is data here.

enum class PartKind {
    Stick,       // Rocker: word = vertical axis, word2 = horizontal axis, word3 = twist (or -1)
    Knob,        // RotaryKnob
    LeftDial,    // Dial covering the quarter left of the top
    RightDial,   // Dial covering the quarter right of the top
    Switch,      // three-position lever; vertical or not
    Lamps,       // a row of key lamps: keyWord, firstBit, captions
    Pad,         // direction pad: keyWord bits firstBit .. firstBit + 4 = up, left, down, right, centre
    StopLight,   // emergency stop picture: lit when keyWord's bit firstBit is clear, or when
                 // switch word `word` is in its last position
    Picture,     // a fixed picture of the unit beside the program ("/image/...")
};

struct PartSpec {
    PartKind kind = PartKind::Picture;
    QRectF place; // in the unit's picture area, as fractions of its width and height
    int word = -1;
    int word2 = -1;
    int word3 = -1;
    QString label;  // stick: vertical axis; switch, knob, dial: its name
    QString label2; // stick: horizontal axis
    bool vertical = true;
    int keyWord = 0; // 0 = the key word at K - 2, 1 = the one at K - 4
    int firstBit = 0;
    QStringList captions;
    QString picture;
};

enum class BodyShape { Handset, GroundStation };

struct ModelSpec {
    QString identifier;
    int k = 0;        // control block length of the report
    int keyWords = 1; // Larch has two
    QString calibrationText;
    BodyShape body = BodyShape::Handset;
    bool sbus1StartsFull = false; // Alder shows its SBUS 1 bars at 150 until the first report
    QVector<PartSpec> parts;
};

constexpr int kModelCount = 7;

// Models 0..6: ALDER, BIRCH, CEDAR, LARCH, MAPLE, ROWAN, WILLO.
const ModelSpec &modelSpec(int model);
