#pragma once

#include <QByteArray>
#include <QRandomGenerator>
#include <QVector>

namespace ModuleSim
{

// The module product lines; they differ in their report layouts and in how
// they write the link group.
enum class ModuleKind { Kite, Kestrel, Falcon };

// Which records a report carries: the centre node's view of its access nodes
// (^DAPR), an access node's view of its centre (^DRPR) or a mesh node's view
// of its neighbours (^DRPR, Kestrel).
enum class ReportRecords { Centre, Access, Mesh };

// Makes the link reports the module sends in answer to its report commands:
// two or three node records, each ending in a blank line, in the layout of
// the module kind. The signal figures move with every report; each node's two
// antennas step through the four quality bands of the signal-to-noise ratio
// (19 and more, 13..18, 7..12, 6 and less) at different phases, so that a few
// reports show every band.
class ReportGenerator
{
public:
    explicit ReportGenerator(ModuleKind kind = ModuleKind::Kite, quint32 seed = 1);

    QByteArray report(ReportRecords records);

private:
    struct Node {
        int id;
        int distance; // metres
        int power; // dBm
    };
    struct Figures {
        int rssi[2];
        int rsrp[2];
        int snr[2];
    };

    Figures nextFigures(int nodeIndex);
    QByteArray record(ReportRecords records, const Node &node, const Figures &f);

    ModuleKind m_kind;
    QRandomGenerator m_rng;
    QVector<Node> m_nodes;
    int m_count = 0; // reports made so far
};

} // namespace ModuleSim
