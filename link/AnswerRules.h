#pragma once

#include "CodeId.h"

#include <QByteArray>
#include <QString>

// How the configurator treats each command code when an answer arrives.
enum class AnswerKind {
    OutOfRange,        // not a code the unit sends: skipped like a bad frame
    Unknown,           // in range but unused: ignored
    Read,              // status 0xEE logs, anything else hands on the whole payload
    Write,             // status 0xEE logs, anything else is consumed silently
    ChannelReport,     // 0xA5: payload without its first byte, no status check
    CalibrationStart,  // 0xE6
    CalibrationFinish, // 0xE7
    ModuleReset,       // 0x11, 0x12: handed on only when exactly one byte long
    Group,             // custom output, CAN mapping, comprehensive groups: reads and writes alike
    CanData,           // 0x26: shown in the CAN receive window
    ModuleKind,        // 0xDF
    Identify,          // 0xFF
};

struct CodeInfo {
    AnswerKind kind = AnswerKind::OutOfRange;
    int codeId = -1;     // value handed on, -1 when nothing is
    QString failureText; // logged when the unit refuses (status 0xEE)
};

// The code table. Only codes whose value as a signed byte lies in -93..57
// (0xA3..0xFF and 0x00..0x39) are considered at all.
const CodeInfo &codeInfo(quint8 code);

// After an accepted frame the scan normally resumes behind its trailer. For
// the module-kind answer and for unused codes it resumes one byte after the
// header, so their payload is searched for frames again.
bool resumesBehindFrame(quint8 code);

// What one accepted answer does.
struct Answer {
    bool emits = false;
    CodeID codeId = SearchDevicesData;
    QByteArray data;
    QString failureText;        // non-empty: write it to the debug log
    int moduleKind = -1;        // 0xDF with 0, 1 or 2: the new module kind
    bool moduleAnswer = false;  // any 0xDF answer (logged with the kind it leaves)
    bool identify = false;      // 0xFF: identifier holds the first five bytes
    QString identifier;
    bool showCanWindow = false; // 0x26: open the CAN receive window ...
    bool canWindowGetsData = false; // ... and hand it the payload
};

Answer interpretAnswer(quint8 code, const QByteArray &payload);
