// Feeds arbitrary bytes, cut into reads of arbitrary sizes, through the
// frame cutter and the answer rules, and checks the cutter against the plain
// rules. Any crash, sanitizer report or difference is a finding.
#include "AnswerRules.h"
#include "CanReceive.h"
#include "ChannelReport.h"
#include "FrameCutter.h"
#include "ReferenceCutter.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    FrameCutter cutter;
    ReferenceCutter reference;
    size_t at = 0;
    while (at < size) {
        // Each read: one byte gives its length, the bytes after it are the read.
        const size_t length = std::min<size_t>(size - at - 1, data[at] % 97 + 1);
        const QByteArray read(reinterpret_cast<const char *>(data + at + 1), int(length));
        at += 1 + length;

        QVector<Frame> got;
        cutter.feed(read, [&got](quint8 code, const QByteArray &payload) {
            got.append({ code, payload });
            const Answer answer = interpretAnswer(code, payload);
            if (answer.emits && answer.codeId == ChannelDataReport) {
                ChannelReport report;
                for (int k : { 14, 18, 24, 30 })
                    ChannelReport::decode(answer.data, k, k == 24 ? 2 : 1, report);
            }
            if (answer.canWindowGetsData)
                canReceive::frameLine(answer.data);
        });
        if (!(got == reference.feed(read)) || cutter.pending() != reference.pending)
            std::abort();
    }
    return 0;
}
