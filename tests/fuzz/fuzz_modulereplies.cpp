// Feeds arbitrary bytes to every reader of the radio module's replies, as a
// reply body of the module's web server. Any crash or sanitizer report is a
// finding; so is a value the reply does not hold.
#include "ModuleLabels.h"
#include "ModuleReplies.h"
#include "ReplyScan.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray reply(reinterpret_cast<const char *>(data), int(size));
    using namespace ModuleReplies;
    modemSwitch(reply);
    bands(reply);
    nodeTypes(reply);
    moduleIp(reply);
    hopping(reply);
    slotRatio(reply);
    maxPower(reply);
    carrierAggregation(reply);
    linkGroup(reply, false);
    linkGroup(reply, true);
    setResult(false, reply);
    // A key stops at its closing quote, a temperature at the next blank.
    if (const auto key = linkKey(reply); key && key->contains(QLatin1Char('"')))
        std::abort();
    if (const auto t = temperature(reply);
        t && (t->isEmpty() || t->contains(QLatin1Char(' ')) || t->contains(QLatin1Char('\n'))))
        std::abort();
    // The scanner on its own, from every offset of a short reply.
    int a = 0;
    qint16 h = 0;
    quint16 x = 0;
    quint32 w = 0;
    for (int from = 0; from <= reply.size() && from < 64; ++from)
        ReplyScan::scan(reply, from, " %d,%hd%%\"%hx\"%x", { &a, &h, &x, &w });
    if (ModuleLabels::consoleText(reply).size() < reply.size() / 4)
        std::abort();
    return 0;
}
