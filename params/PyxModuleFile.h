#pragma once

#include <QString>

class QIODevice;
struct DeviceData;

// config/PyxModule.xml names, per model, the inputs the output module can put
// into a CAN frame: one element per model ("Alder" .. "Rowan", "WILLO" for
// the ground station) holding <channel> (inputs that fill a whole data byte)
// and <bit> (inputs that fill single bits), each a list of names separated
// by ";".
namespace PyxModuleFile
{

QString path();
// The element of model 0..6; empty for any other number.
QString modelElement(int model);

// Clears pyxChannelNames and pyxBitNames and fills them from the model's
// element. False when the file cannot be opened (the lists stay empty).
bool load(const QString &path, int model, DeviceData &data);
// The same from an open device.
void load(QIODevice *device, int model, DeviceData &data);

} // namespace PyxModuleFile
