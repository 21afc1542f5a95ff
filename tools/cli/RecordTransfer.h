#pragma once

#include "FileParts.h"
#include "Sequences.h"

#include <QString>
#include <QStringList>

struct DeviceData;

// Moving a whole record to the unit without pages: the payloads of the
// write-all as the window's pages build them from the record, and what the
// unit holds after it took them.
namespace RecordTransfer
{

// The write-all's payloads of a record for a unit of this model and module
// kind. The module power group goes out only to a unit of kind 1 and the
// output module's group only to kind 2, as in the window, where only the
// page of the unit's kind exists. Unlike the window's write-all, the fixed
// values go out in sign and magnitude, the way the unit answers them, so
// that a record read from one unit lands unchanged on another.
AllPayloads allPayloads(const DeviceData &data, int model, int moduleKind);

// The part of the file a request belongs to (a read or a write of the
// setting groups); -1 for any other request.
int partOfRead(const Request &request);
int partOfWrite(const Request &request);

// The requests of the plan that belong to the given parts, in their order.
RequestPlan onlyParts(const RequestPlan &plan, const FileParts::Parts &parts, int (*partOf)(const Request &));

// What a restore of the file's parts leaves in the unit, as differences
// from the file (file -> unit), in the words of RecordDiff. `readBack` is
// what the unit answered after the write; only the written parts count, and
// of the key kinds only the keys the model has.
QStringList verify(
    const DeviceData &file, const DeviceData &readBack, const FileParts::Parts &written, int model);

// One line when the window's Load Config would read the file's fixed values
// otherwise than they are written (it converts entries with bit 7 set, by a
// different rule on each port); empty otherwise.
QString windowReadsFixedValuesOtherwise(const QByteArray &fileBytes);

// The record a unit holds after it received the plan: every write frame
// taken back in with the decoder of the read that answers in its layout.
// This is what a read after the restore gives, with the conversions of the
// file reader and the wire applied.
DeviceData afterWriting(const RequestPlan &plan, int model, int moduleKind);

// A parameter file is readable when it is a well-formed XML document whose
// root is <body>; otherwise false with the reason (line and column).
bool checkFile(const QString &path, QString *error);

} // namespace RecordTransfer
