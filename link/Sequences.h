#pragma once

#include <QByteArray>
#include <QList>
#include <QVector>

#include <optional>

// The configurator's request sequences as plans: the frames to write, in
// order, each followed by a busy wait. Requests are fire-and-forget; the
// answers reach the pages whenever they arrive.

constexpr int kRequestSpacingMs = 100;
constexpr int kFactoryResetSettleMs = 500;
constexpr int kStartupDelayMs = 1000;

// Sections of the configuration hub; they select the read and write groups.
enum HubSection {
    SectionSbus1 = 0,
    SectionSbus2 = 1,
    SectionChannelHold = 2,
    SectionButtons = 3,
    SectionComprehensive = 4,
    SectionRadioModule = 5,
    SectionCustomOutput = 6,
    SectionCount = 7,
};

struct Request {
    QByteArray frame;
    int waitMs = kRequestSpacingMs;
};
using RequestPlan = QVector<Request>;

// Expected payload list sizes of the pages (the custom output page: see below).
constexpr int kSbusPayloads = 2;
constexpr int kChannelHoldPayloads = 1;
constexpr int kButtonPayloads = 3;
constexpr int kComprehensivePayloads = 11;
constexpr int kRadioModulePayloads = 2;
int customOutputPayloadCount(int canFrames);

// The payload lists of every setting page, for the write-all after a
// parameter file was loaded. A list of the wrong size leaves its group out.
struct AllPayloads {
    QList<QByteArray> sbus[2];
    QList<QByteArray> channelHold;
    QList<QByteArray> buttons;
    QList<QByteArray> comprehensive;
    QList<QByteArray> radioModule;  // written when the module kind is not 2
    QList<QByteArray> customOutput; // written when the module kind is 2
    int canFrames = 0;
    int moduleKind = 0;
};

namespace Sequences {

// The sections a unit of this radio module kind has: the five every unit
// has, then the module power section for kind 1 or the custom output
// section for kind 2.
QVector<int> sections(int moduleKind);

// Start-up: module kind, then identity.
RequestPlan identifyUnit();
// After identification: start the channel upload for the model page.
RequestPlan startModelPageUpload();
// Showing the hub: stop the upload, then read SBUS port 1.
RequestPlan showHub();
// Closing the main window: stop the upload, read the battery.
RequestPlan closing();

// The read group of a hub section (empty for any other number).
RequestPlan readGroup(int section);
// A hub menu button: its prelude followed by the section's read group.
RequestPlan menu(int section);

// The write of one section. Nothing (no value) when the page handed over the
// wrong number of payloads. The custom output section runs in its CAN frame
// mode when canFrameCount is not 0; the payload count it expects comes from
// the size of the CAN frame list.
std::optional<RequestPlan> writeSection(int section, const QList<QByteArray> &payloads, int canFrameCount,
                                        int canFrameListSize);

RequestPlan writeAll(const AllPayloads &all);

// Factory reset, 500 ms to settle, then the section's read group again.
RequestPlan factoryReset(int section);

RequestPlan startCalibration();
RequestPlan finishCalibration();
RequestPlan moduleGroundReset();
RequestPlan moduleAirReset();
RequestPlan searchDevices();

// Refresh of the CAN frames 0 .. count - 1 of the custom output page.
RequestPlan canFrameRefresh(int count);

} // namespace Sequences
