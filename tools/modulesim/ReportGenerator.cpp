#include "ReportGenerator.h"

#include <QList>

namespace ModuleSim
{

namespace
{

// The record layouts, one field name per number of the record, quoted where
// the module writes the number in double quotes. "x" is a figure nobody reads.
const char *const kAccessKite
    = "id,x,x,\"x\",x,\"x\",\"x\",\"x\",x,\"x\",dist,x,rssi1,rssi2,rsrp1,rsrp2,\"snr1\",\"snr2\",power";
const char *const kAccessFalcon = "id,x,x,x,\"x\",x,\"x\",x,\"x\",x,\"x\",dist,x,rssi1,rssi2,rsrp1,rsrp2,x,"
                                  "\"snr1\",\"snr2\",power";
// Centre records name the node in quotes ahead of these numbers.
const char *const kCentreKite
    = "x,\"x\",x,\"x\",\"x\",\"x\",x,\"x\",dist,x,rssi1,rssi2,rsrp1,rsrp2,x,\"snr1\",\"snr2\",power";
const char *const kCentreFalcon
    = "x,x,\"x\",x,\"x\",x,\"x\",x,\"x\",dist,x,rssi1,rssi2,rsrp1,rsrp2,x,\"snr1\",\"snr2\",power";
// Kestrel's mesh nodes are named by a hexadecimal id.
const char *const kMesh
    = "x,x,x,hexid,x,\"x\",x,\"x\",\"x\",x,\"x\",dist,rssi1,rssi2,rsrp1,rsrp2,power,x,x,x,"
      "\"snr1\",\"snr2\"";

const QByteArray kRecordEnd = QByteArrayLiteral("\r\n\r\n");

// Signal-to-noise bands, best first, as lowest and highest value.
const int kSnrBands[4][2] = { { 19, 30 }, { 13, 18 }, { 7, 12 }, { -5, 6 } };

} // namespace

ReportGenerator::ReportGenerator(ModuleKind kind, quint32 seed)
    : m_kind(kind)
    , m_rng(seed)
{
    const int ids[3] = { 2, 3, 4 };
    for (int id : ids)
        m_nodes.append({ id, m_rng.bounded(200, 5000), m_rng.bounded(10, 24) });
}

ReportGenerator::Figures ReportGenerator::nextFigures(int nodeIndex)
{
    Figures f;
    for (int a = 0; a < 2; ++a) {
        // The second antenna runs two bands apart from the first one.
        const int band = (m_count + nodeIndex + 2 * a) % 4;
        f.snr[a] = m_rng.bounded(kSnrBands[band][0], kSnrBands[band][1] + 1);
        // Received strength follows the signal quality, with some scatter.
        f.rssi[a] = qBound(-90, -88 + (f.snr[a] + 5) * 46 / 35 + m_rng.bounded(-2, 3), -40);
        f.rsrp[a] = qBound(-120, f.rssi[a] - 22 + m_rng.bounded(-3, 4), -60);
    }
    return f;
}

QByteArray ReportGenerator::report(ReportRecords records)
{
    // Now and then a node is out of reach and missing from the report.
    const int count = m_rng.bounded(0, 4) == 0 ? 2 : 3;
    QByteArray out;
    for (int i = 0; i < count; ++i) {
        Node &n = m_nodes[i];
        n.distance = qBound(0, n.distance + m_rng.bounded(-60, 61), 20000);
        n.power = qBound(-40, n.power + m_rng.bounded(-1, 2), 33);
        out += record(records, n, nextFigures(i));
    }
    ++m_count;
    return out;
}

QByteArray ReportGenerator::record(ReportRecords records, const Node &node, const Figures &f)
{
    const bool falcon = m_kind == ModuleKind::Falcon;
    const char *layout = kMesh;
    QByteArray out;
    switch (records) {
    case ReportRecords::Centre:
        layout = falcon ? kCentreFalcon : kCentreKite;
        out = "^DAPR: \"" + QByteArray::number(node.id) + "\",";
        break;
    case ReportRecords::Access:
        layout = falcon ? kAccessFalcon : kAccessKite;
        out = "^DRPR: ";
        break;
    case ReportRecords::Mesh:
        out = "^DRPR: ";
        break;
    }

    const QList<QByteArray> fields = QByteArray(layout).split(',');
    for (int i = 0; i < fields.size(); ++i) {
        const bool quoted = fields.at(i).startsWith('"');
        const QByteArray name = quoted ? fields.at(i).mid(1, fields.at(i).size() - 2) : fields.at(i);
        QByteArray value;
        if (name == "id")
            value = QByteArray::number(node.id);
        else if (name == "hexid")
            value = QByteArray::number(0x1a00 + node.id, 16);
        else if (name == "dist")
            value = QByteArray::number(node.distance);
        else if (name == "power")
            value = QByteArray::number(node.power);
        else if (name.startsWith("rssi"))
            value = QByteArray::number(f.rssi[name.endsWith('2') ? 1 : 0]);
        else if (name.startsWith("rsrp"))
            value = QByteArray::number(f.rsrp[name.endsWith('2') ? 1 : 0]);
        else if (name.startsWith("snr"))
            value = QByteArray::number(f.snr[name.endsWith('2') ? 1 : 0]);
        else
            value = QByteArray::number((i * 7 + node.id) % 16);
        if (i > 0)
            out += ',';
        out += quoted ? '"' + value + '"' : value;
    }
    return out + kRecordEnd;
}

} // namespace ModuleSim
