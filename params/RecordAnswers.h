#pragma once

#include <QByteArray>
#include <QtGlobal>

struct DeviceData;

// The unit's answers to the read requests of the setting groups, taken into
// a record with the groups' codecs. A tool without pages (and the window's
// copy of what the unit last said) reads the unit through this; the pages
// call the same codecs and refresh their controls besides.
namespace RecordAnswers
{

// Takes the payload of an accepted answer (status byte included, refusals
// already filtered out) to the read request `code` into the record. True when
// the code is a settings read and the payload fitted; false otherwise, with
// the record untouched. `model` (0..6) decides the layout of the key kinds.
bool decode(quint8 code, const QByteArray &payload, int model, DeviceData &data);

// The read request whose answer has the layout of the write `code`
// (0xA4 -> 0xA3, 0xE8 -> 0xE9, 0x35 -> 0x34, ...); 0 for a code that is not
// a settings write.
quint8 readCodeOfWrite(quint8 code);

} // namespace RecordAnswers
