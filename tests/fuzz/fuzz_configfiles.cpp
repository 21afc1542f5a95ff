// Feeds arbitrary bytes to the small files of config/: the first byte picks
// the file, the rest is its content.
//   first byte % 3 == 0: config/port.xml. Every name is trimmed, and the
//     last name, when printable, written back as the port chooser remembers
//     a port reads back as itself.
//   first byte % 3 == 1: config/PyxModule.xml, for the model (first byte / 3)
//     % 8, where 7 is no model: its lists stay empty. Every name is trimmed,
//     not empty and free of ";".
//   first byte % 3 == 2: config/lastAddr.tmp. Storing the path read and
//     reading it again gives the same path.
// Any crash, sanitizer report or broken rule is a finding.
#include "DeviceData.h"
#include "ParameterFile.h"
#include "PortFile.h"
#include "PyxModuleFile.h"

#include <QBuffer>

#include <cstdint>
#include <cstdlib>

namespace
{

void check(bool ok)
{
    if (!ok)
        std::abort();
}

bool printable(const QString &name)
{
    for (const QChar c : name) {
        if (c.unicode() < 0x20 || c.unicode() == 0x7F || c.isNonCharacter() || c.isSurrogate())
            return false;
    }
    return true;
}

void portFile(const QByteArray &content)
{
    QBuffer file;
    file.setData(content);
    file.open(QIODevice::ReadOnly);
    const QStringList names = readPortNames(&file);
    for (const QString &name : names)
        check(name == name.trimmed());
    // The port chooser remembers the port it opened the same way.
    if (!names.isEmpty() && printable(names.last())) {
        QBuffer written;
        written.open(QIODevice::ReadWrite);
        check(writePortFile(&written, names.last()));
        written.seek(0);
        check(readPortNames(&written) == QStringList { names.last() });
    }
}

void pyxModuleFile(const QByteArray &content, int model)
{
    QBuffer file;
    file.setData(content);
    file.open(QIODevice::ReadOnly);
    DeviceData record;
    record.pyxChannelNames = QStringList { QStringLiteral("stale") };
    PyxModuleFile::load(&file, model, record);
    for (const QStringList *names : { &record.pyxChannelNames, &record.pyxBitNames }) {
        check(model < 7 || names->isEmpty());
        for (const QString &name : *names)
            check(!name.isEmpty() && name == name.trimmed() && !name.contains(QLatin1Char(';')));
    }
    check(!record.pyxChannelNames.contains(QStringLiteral("stale")));
}

void lastPathFile(const QByteArray &content)
{
    const QString last = LastPath::fromFileBytes(content);
    check(LastPath::fromFileBytes(LastPath::toFileBytes(last)) == last);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    const QByteArray content(reinterpret_cast<const char *>(data + 1), int(size - 1));
    switch (data[0] % 3) {
    case 0:
        portFile(content);
        break;
    case 1:
        pyxModuleFile(content, data[0] / 3 % 8);
        break;
    default:
        lastPathFile(content);
        break;
    }
    return 0;
}
