#include "ButtonCodec.h"

#include "DeviceData.h"
#include "FileFragments.h"
#include "WireBytes.h"

#include <algorithm>

using namespace WireBytes;

namespace
{

constexpr int kPairs = 6;
// Larch keeps keys 16..24 in the first nine bytes of its key kinds.
constexpr int kLarchLeadingKeys = 9;
constexpr int kLarchFirstLeadingKey = 15;

// The key of wire position i on a Larch handset.
int larchKey(int position)
{
    return position < kLarchLeadingKeys ? kLarchFirstLeadingKey + position : position - kLarchLeadingKeys;
}

} // namespace

namespace ButtonCodec
{

Settings Settings::fromRecord(const DeviceData &data)
{
    Settings s;
    std::copy(&data.ckeyMap[0][0], &data.ckeyMap[0][0] + kKeyCombinations * 3, &s.ckeyMap[0][0]);
    std::copy(&data.sckeyMap[0][0], &data.sckeyMap[0][0] + kSuperKeys * 12, &s.sckeyMap[0][0]);
    std::copy(data.keyGear, data.keyGear + kKeyGears, s.keyGear);
    return s;
}

void Settings::storeInto(DeviceData &data) const
{
    std::copy(&ckeyMap[0][0], &ckeyMap[0][0] + kKeyCombinations * 3, &data.ckeyMap[0][0]);
    std::copy(&sckeyMap[0][0], &sckeyMap[0][0] + kSuperKeys * 12, &data.sckeyMap[0][0]);
    std::copy(keyGear, keyGear + kKeyGears, data.keyGear);
}

bool decodeCombinations(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kCombinationBytes)
        return false;
    for (int i = 0; i < kKeyCombinations; ++i)
        for (int k = 0; k < 3; ++k)
            data.ckeyMap[i][k] = at(payload, 3 * i + k);
    return true;
}

bool decodeSuperKeys(const QByteArray &payload, DeviceData &data)
{
    if (payload.size() != kSuperKeyBytes)
        return false;
    for (int key = 0; key < kSuperKeys; ++key) {
        const int block = key * 3 * kPairs;
        for (int j = 0; j < kPairs; ++j) {
            const int magnitude = at(payload, block + 2 * kPairs + j);
            data.sckeyMap[key][j] = at(payload, block + j);
            data.sckeyMap[key][kPairs + j] = at(payload, block + kPairs + j) != 0 ? -magnitude : magnitude;
        }
    }
    return true;
}

bool decodeKeyKinds(const QByteArray &payload, int model, DeviceData &data)
{
    const int count = qMin(int(payload.size()), kKeyGears);
    for (int i = 0; i < count; ++i)
        data.keyGear[model == kLarchModel ? larchKey(i) : i] = at(payload, i);
    return count > 0;
}

QByteArray combinationPayload(const Settings &s)
{
    QByteArray out;
    out.reserve(kCombinationBytes);
    for (const auto &entry : s.ckeyMap)
        for (int value : entry)
            out.append(byteOf(value));
    return out;
}

QByteArray superKeyPayload(const Settings &s)
{
    QByteArray out;
    out.reserve(kSuperKeyBytes);
    for (const auto &key : s.sckeyMap) {
        for (int j = 0; j < kPairs; ++j)
            out.append(byteOf(key[j]));
        for (int j = 0; j < kPairs; ++j)
            out.append(char(key[kPairs + j] < 0 ? 1 : 0));
        for (int j = 0; j < kPairs; ++j)
            out.append(byteOf(qAbs(key[kPairs + j])));
    }
    return out;
}

QByteArray keyKindPayload(const Settings &s, int model)
{
    QByteArray out;
    if (model == kLarchModel) {
        out.reserve(kLarchKeyKindBytes);
        for (int i = 0; i < kLarchKeyKindBytes; ++i)
            out.append(byteOf(s.keyGear[larchKey(i)]));
        return out;
    }
    out.reserve(kKeyKindBytes);
    for (int i = 0; i < kKeyKindBytes; ++i)
        out.append(byteOf(s.keyGear[i]));
    return out;
}

QList<QByteArray> payloads(const Settings &s, int model)
{
    return { combinationPayload(s), superKeyPayload(s), keyKindPayload(s, model) };
}

QString fileFragment(const Settings &s)
{
    QString combinations;
    for (const auto &entry : s.ckeyMap)
        combinations += FileFragments::intList(entry, 3) + QLatin1Char(';');
    QString superKeys;
    for (const auto &key : s.sckeyMap)
        superKeys += FileFragments::intList(key, 12) + QLatin1Char(';');
    return FileFragments::line(QStringLiteral("ckeyMap"), combinations)
        + FileFragments::line(QStringLiteral("sckeyMap"), superKeys)
        + FileFragments::line(
            QStringLiteral("keyGear"), FileFragments::intList(s.keyGear, kKeyGears) + QLatin1Char(';'));
}

} // namespace ButtonCodec
