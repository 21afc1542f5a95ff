#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

struct DeviceData;

// The handset's keys on the wire and in the parameter file: five combination
// keys, two super keys and the kind of every key.
//
// A key is its position in the model's key-name list; the list ends with
// "NONE", which is 255 in the record, on the wire and in the file.
//
// Combination keys (answer 0xC0, write 0xC1), 15 bytes: per entry the first
// key, the second key and the single-step increment.
// Super keys (answer 0xC2, write 0xC3), 36 bytes: per super key six keys,
// six sign bytes (1 = negative) and six magnitudes.
// Key kinds (answer 0xCA, write 0xCB): one byte per key, 0 one-state,
// 1 two-state, 2 three-state. Every model but Larch sends keys 1..12; Larch
// sends 24 bytes, keys 16..24 first, then keys 1..15.
namespace ButtonCodec
{

constexpr int kCombinationBytes = 15;
constexpr int kSuperKeyBytes = 36;
constexpr int kKeyKindBytes = 12;
constexpr int kLarchKeyKindBytes = 24;
constexpr int kLarchModel = 3;

// The three groups as the page shows them, or as the record holds them. The
// page builds one from its controls (a key selector showing "NONE" gives
// 255); a tool without pages takes the record's.
struct Settings {
    int ckeyMap[5][3] = {};
    int sckeyMap[2][12] = {};
    int keyGear[24] = {};

    static Settings fromRecord(const DeviceData &data);
    void storeInto(DeviceData &data) const;
};

// Each fills its group of the record; false (and the record untouched) for
// an answer of another length.
bool decodeCombinations(const QByteArray &payload, DeviceData &data);
bool decodeSuperKeys(const QByteArray &payload, DeviceData &data);
// Every byte present sets its key (at most 24); false for an empty answer.
bool decodeKeyKinds(const QByteArray &payload, int model, DeviceData &data);

QByteArray combinationPayload(const Settings &s);
QByteArray superKeyPayload(const Settings &s);
QByteArray keyKindPayload(const Settings &s, int model);
// The three write payloads in the order of the write: 0xC1, 0xC3, 0xCB.
QList<QByteArray> payloads(const Settings &s, int model);

// <ckeyMap>, <sckeyMap> and <keyGear>.
QString fileFragment(const Settings &s);

} // namespace ButtonCodec
