#pragma once

#include <QStringList>

class QXmlStreamReader;

// Both XML files of the program (the parameter file and the model default
// files) hold the SBUS channel groups of a port as a container of eight
// children. Their texts are taken in document order and assigned by
// position, not by name.
namespace XmlContainers
{

// The eight children of <sbus1Default> / <sbus2Default>, in the order the
// record's channel groups take them: phase, fineTuning, leftTrip, rightTrip,
// safeProtectionState, safeProtectionValue, channelMap, noneValue.
const QStringList &channelGroupTags();

// Collects, in document order, the texts of every element below the current
// container whose name is in `known`, up to the container's own end tag;
// unknown wrappers are searched too. Returns false when the document ended or
// broke before that end tag.
bool collectChildTexts(QXmlStreamReader &xml, const QStringList &known, QStringList &texts);

} // namespace XmlContainers
