#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

class QFile;

// The radio link module's periodic link report, as the log monitor asks for
// it and reads it back: no widgets here, only bytes and text.
namespace LinkReport
{

// The module kind chosen in the monitor when polling starts.
enum class ModuleKind { None = 0, Kite = 1, Kestrel = 2, Falcon = 3 };

// Which report the module sends back: Kestrel modules report their mesh,
// the others either the centre node's view (^DAPR) or an access node's
// (^DRPR).
enum class ReportKind { Access, Centre, Mesh };

// The figures of one antenna of a node.
struct AntennaFigures {
    int rssi = 0;
    int rsrp = 0;
    int snr = 0;
};

// One remote node of a report, as its row shows it.
struct LinkRecord {
    QString node;
    AntennaFigures main;
    AntennaFigures second;
    int power = 0;
    int distance = 0; // metres
};

// Where one record lies in the report text.
struct RecordSpan {
    int from = 0;
    int length = 0;
};

// The module's web server keeps its answer to the report command in the
// reply head: the monitor takes the first kReplyHeadBytes as the HTTP head.
constexpr int kReplyHeadBytes = 280;

// A mesh has a few dozen nodes at most; a report listing more than this is
// not from a module, and only this many of its records become rows.
constexpr int kMaxRecords = 256;

// Node identifiers from centre reports are shown at most this long.
constexpr int kMaxNodeIdLength = 64;

// The AT command that asks for the report (empty for no module kind).
QString command(ModuleKind module, bool centreMode);

// The whole HTTP request written to the module's port, Latin-1, with the
// address text as typed in the Referer and Host lines.
QByteArray request(const QString &typedAddress, const QString &command);

ReportKind reportKind(ModuleKind module, bool centreMode);

// The report text of one read: false (and no text) for fewer than
// kReplyHeadBytes + 1 bytes.
bool reportText(const QByteArray &reply, QByteArray *report);

// "^DAPR" for centre reports, "^DRPR" for access and mesh reports.
QByteArray marker(ReportKind kind);

// Each marker occurrence up to the first "\r\n\r\n" after it (the terminator
// not included), or to the end of the text when none follows.
QVector<RecordSpan> cutRecords(const QByteArray &report, ReportKind kind);

// One record, starting at its marker. False when the module kind has no
// layout for this report or the record does not fill the whole layout.
bool parseRecord(const char *data, int size, ReportKind kind, ModuleKind module, LinkRecord *record);
bool parseRecord(const QByteArray &record, ReportKind kind, ModuleKind module, LinkRecord *out);

// All records of a report that parse, in order, at most kMaxRecords.
QVector<LinkRecord> parseReport(const QByteArray &report, ReportKind kind, ModuleKind module);

// The link-quality bands of the signal-to-noise ratio (dB), best first: a
// value belongs to the first band whose lowest value it reaches. The table's
// cells and the history plot's background take their colours from here.
struct SnrBand {
    int lowest; // the last band takes everything below the others
    const char *colour; // "#RRGGBB"
};
constexpr int kSnrBandCount = 4;
extern const SnrBand kSnrBands[kSnrBandCount];

// The index in kSnrBands of the band of snr.
int snrBand(int snr);

// The style of a signal-to-noise cell showing the value snr.
QString snrStyle(int snr);

// The part of a log file name that stands for the module's address.
QString safeAddressPart(const QString &typedAddress);

// "/log/log_access_<address>.txt" and its centre and mesh siblings, relative
// to the folder of run-time files.
QString logFileName(ReportKind kind, const QString &typedAddress);

// Appends the report text unchanged to its log file, creating log/ when it is
// missing. False when the file cannot be opened.
bool appendToLog(QFile &file, ReportKind kind, const QString &typedAddress, const QByteArray &report);

} // namespace LinkReport
