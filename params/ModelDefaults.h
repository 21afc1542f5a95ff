#pragma once

#include <QString>
#include <QStringList>

class QIODevice;
struct DeviceData;

// Each model ships a small XML file in the program's config folder with its
// battery voltage limits, the names its pages offer in their selectors and
// the factory values of several parameter groups. Loading it happens when the
// configuration hub is set up for a recognised model.

// The identifiers the unit answers to 0xFF, in model order 0..6:
// ALDER, BIRCH, CEDAR, LARCH, MAPLE, ROWAN, WILLO.
const QStringList &modelIdentifiers();

// File name of model 0..6 (Alder .. Rowan, Willow); empty for any other number.
QString modelDefaultsFileName(int model);

// Full path beside the program ("/config/" + the file name); empty for an
// unknown model.
QString modelDefaultsPath(int model);

// Reads the file at path into data. The lists channelMapNames,
// holdSwitchNames, keyMapNames and hidMapNames are cleared first, also when
// the file cannot be opened; sbusControlNames is only ever appended to.
// Returns false when the file cannot be opened (the caller tells the user).
// A malformed document stops the reading at the error; what was read before
// it stays in the record.
bool loadModelDefaults(const QString &path, DeviceData &data);
// The same from an open device (the four lists are cleared here too).
void loadModelDefaults(QIODevice *device, DeviceData &data);
