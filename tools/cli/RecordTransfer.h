#pragma once

#include "Sequences.h"

#include <QString>

struct DeviceData;

// Moving a whole record to the unit without pages: the payloads of the
// write-all as the window's pages build them from the record, and what the
// unit holds after it took them.
namespace RecordTransfer
{

// The write-all's payloads of a record for a unit of this model and module
// kind. The module power group goes out only to a unit of kind 1 and the
// output module's group only to kind 2, as in the window, where only the
// page of the unit's kind exists.
AllPayloads allPayloads(const DeviceData &data, int model, int moduleKind);

// The record a unit holds after it received the plan: every write frame
// taken back in with the decoder of the read that answers in its layout.
// This is what a read after the restore gives, with the conversions of the
// file reader and the wire applied.
DeviceData afterWriting(const RequestPlan &plan, int model, int moduleKind);

// A parameter file is readable when it is a well-formed XML document whose
// root is <body>; otherwise false with the reason (line and column).
bool checkFile(const QString &path, QString *error);

} // namespace RecordTransfer
