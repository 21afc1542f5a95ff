// The virtual unit's protocol side without a line: what it stores, answers
// and reports, and how it copes with what it should not get.
#include "AnswerRules.h"
#include "ChannelMixer.h"
#include "FrameCutter.h"
#include "RequestCutter.h"
#include "SerialFrame.h"
#include "UnitModel.h"
#include "VunitOptions.h"

#include <QtTest>

using namespace Vunit;

Q_DECLARE_METATYPE(Vunit::Model)
Q_DECLARE_METATYPE(Vunit::ChannelSetting)

namespace
{

struct Heard {
    quint8 code;
    QByteArray payload;
};

// Feeds request bytes through the unit's cutter into the unit and cuts the
// answers as the configurator does.
QVector<Heard> exchange(UnitModel &unit, const QByteArray &bytes, QStringList *notes = nullptr, qint64 t = 0)
{
    RequestCutter requests;
    QVector<QByteArray> frames;
    requests.feed(
        bytes, [&](quint8 c, const QByteArray &p) { frames += unit.handle(c, p, t, notes); }, notes);
    FrameCutter answers;
    QVector<Heard> out;
    for (const QByteArray &f : frames)
        answers.feed(f, [&](quint8 c, const QByteArray &p) { out.append({ c, p }); });
    return out;
}

QByteArray pattern(int size, int seed, int first)
{
    QByteArray out(size, '\0');
    out[0] = char(first);
    for (int i = 1; i < size; ++i)
        out[i] = char((i * 37 + seed * 11) % 151); // never 0xEE or 0xFA
    return out;
}

QVector<quint16> words(const QByteArray &bytes, int from, int count)
{
    QVector<quint16> out;
    for (int i = 0; i < count; ++i)
        out.append(quint8(bytes.at(from + 2 * i)) | (quint8(bytes.at(from + 2 * i + 1)) << 8));
    return out;
}

} // namespace

class TestVunitUnit : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void writeThenReadRoundTrips_data();
    void writeThenReadRoundTrips();
    void factoryResetRestoresWrittenGroups();
    void canFrameWritesFollowFrameOrder();
    void reportLayout_data();
    void reportLayout();
    void mixing_data();
    void mixing();
    void refusedCodesAnswerEE_data();
    void refusedCodesAnswerEE();
    void badRequestsAreIgnored_data();
    void badRequestsAreIgnored();
};

void TestVunitUnit::writeThenReadRoundTrips_data()
{
    QTest::addColumn<Model>("model");
    QTest::addColumn<QByteArray>("write");
    QTest::addColumn<QByteArray>("read");
    QTest::addColumn<QByteArray>("expected");

    auto longRow
        = [](const char *name, quint8 w, const QByteArray &p, const QByteArray &read,
              Model m = Model::Alder) { QTest::newRow(name) << m << SerialFrame::encode(w, p) << read << p; };
    auto shortRow = [](const char *name, quint8 w, quint8 byte, const QByteArray &read) {
        QTest::newRow(name) << Model::Alder << SerialFrame::shortFrame(w, byte) << read
                            << QByteArray(1, char(byte));
    };
    const auto bare = [](quint8 c) { return SerialFrame::encode(c); };
    const auto withByte = [](quint8 c, quint8 b) { return SerialFrame::shortFrame(c, b); };

    longRow("sbus tuning port 1", 0xA4, pattern(85, 1, 0), withByte(0xA3, 0));
    longRow("sbus tuning port 2", 0xA4, pattern(85, 2, 1), withByte(0xA3, 1));
    longRow("sbus none port 1", 0xA8, pattern(17, 3, 0), withByte(0xA7, 0));
    QByteArray hold = QByteArray::fromHex("0003010080000000") + QByteArray::fromHex("01ff000000000180");
    longRow("channel hold, both ports", 0xB5, hold, withByte(0xB4, 0));
    longRow("throttle hold", 0xB7, QByteArray::fromHex("00020101250f16"), withByte(0xB6, 0));
    longRow("key combinations", 0xC1, pattern(15, 5, 1), bare(0xC0));
    longRow("key attributes", 0xCB, pattern(12, 7, 1), bare(0xCA));
    longRow("key attributes Larch", 0xCB, pattern(24, 8, 2), bare(0xCA), Model::Larch);
    longRow("low voltage", 0xEC, QByteArray::fromHex("0732"), bare(0xEB));
    longRow("baud 57600", 0x14, QByteArray::fromHex("00e10000"), bare(0x13));
    longRow("module power", 0x37, QByteArray::fromHex("0001"), bare(0x36));
    longRow("module physical switch", 0x39, QByteArray::fromHex("0209"), bare(0x38));
    longRow("serial stream header", 0xD8, pattern(8, 10, 0x55), bare(0xD7));
    longRow("serial stream table", 0xDA, pattern(46, 11, 40), bare(0xD9));
    shortRow("sbus output", 0xC5, 3, bare(0xC4));
    shortRow("sbus priority", 0x31, 0x43, bare(0x30));
    shortRow("output module", 0x16, 3, bare(0x15));
    shortRow("can frequency", 0xD4, 120, bare(0xD3));
    shortRow("can baud", 0x25, 4, bare(0x24));
    // The SBUS control write travels as the fixed 12-byte frame.
    QTest::newRow("sbus control, fixed frame")
        << Model::Alder << SerialFrame::fixedControlFrame(QByteArray::fromHex("02110110001101")) << bare(0x34)
        << QByteArray::fromHex("02110110001101");
    QTest::newRow("can frame 2 of 2")
        << Model::Alder << SerialFrame::encode(0xD6, QByteArray::fromHex("0201aa0578563412040008"))
        << withByte(0xD5, 1) << QByteArray::fromHex("0201aa0578563412040008");
}

void TestVunitUnit::writeThenReadRoundTrips()
{
    QFETCH(Model, model);
    QFETCH(QByteArray, write);
    QFETCH(QByteArray, read);
    QFETCH(QByteArray, expected);

    UnitConfig config;
    config.model = model;
    UnitModel unit(config);
    QStringList notes;
    const QVector<Heard> written = exchange(unit, write, &notes);
    QCOMPARE(notes, QStringList());
    QCOMPARE(written.size(), 1);
    QCOMPARE(written.first().payload, QByteArray(1, '\0'));

    const QVector<Heard> answer = exchange(unit, read, &notes);
    QCOMPARE(answer.size(), 1);
    QCOMPARE(answer.first().code, quint8(read.at(1)));
    QCOMPARE(answer.first().payload.toHex(), expected.toHex());
    // The configurator hands it on whole.
    const Answer handed = interpretAnswer(answer.first().code, answer.first().payload);
    QVERIFY(handed.emits);
    QCOMPARE(handed.data, expected);
}

void TestVunitUnit::factoryResetRestoresWrittenGroups()
{
    UnitModel unit(UnitConfig {});
    const QByteArray factoryBaud = exchange(unit, SerialFrame::encode(0x13)).first().payload;
    QCOMPARE(factoryBaud.toHex(), QByteArray("00c20100")); // 115200
    exchange(unit, SerialFrame::encode(0x14, QByteArray::fromHex("80250000")));
    exchange(unit, SerialFrame::encode(0xA4, pattern(85, 2, 1)));
    const QVector<Heard> reset = exchange(unit, SerialFrame::encode(0xEA));
    QCOMPARE(reset.size(), 1);
    QCOMPARE(reset.first().payload, QByteArray(1, '\0'));
    QCOMPARE(exchange(unit, SerialFrame::encode(0x13)).first().payload, factoryBaud);
    QCOMPARE(exchange(unit, SerialFrame::shortFrame(0xA3, 1)).first().payload,
        UnitModel(UnitConfig {}).store().sbusTuning(1));
}

void TestVunitUnit::canFrameWritesFollowFrameOrder()
{
    // Each per-frame write names its frame in byte 0; the refresh reads them
    // back by that index, whatever order they came in.
    UnitModel unit(UnitConfig {});
    QByteArray bytes = SerialFrame::shortFrame(0x16, 2);
    bytes += SerialFrame::encode(0xD6, QByteArray::fromHex("0200230100000000000008"));
    bytes += SerialFrame::encode(0xD6, QByteArray::fromHex("0201240100000000000004"));
    bytes += SerialFrame::encode(0xDC, pattern(19, 3, 1));
    bytes += SerialFrame::encode(0xDC, pattern(19, 4, 0));
    bytes += SerialFrame::encode(0x23, pattern(9, 1, 0));
    bytes += SerialFrame::encode(0x23, pattern(9, 2, 1));
    QStringList notes;
    QCOMPARE(exchange(unit, bytes, &notes).size(), 7);
    QCOMPARE(notes, QStringList());

    QCOMPARE(exchange(unit, SerialFrame::shortFrame(0xDB, 1)).first().payload, pattern(19, 3, 1));
    QCOMPARE(exchange(unit, SerialFrame::shortFrame(0xDB, 0)).first().payload, pattern(19, 4, 0));
    QCOMPARE(exchange(unit, SerialFrame::shortFrame(0x22, 1)).first().payload, pattern(9, 2, 1));
    // A mapping write of the wrong length is not stored.
    exchange(unit, SerialFrame::encode(0xDE, pattern(64, 5, 1)), &notes);
    QCOMPARE(notes.size(), 1);
    QCOMPARE(exchange(unit, SerialFrame::shortFrame(0xDD, 1)).first().payload.size(), 65);
    // 0x0A asks for the count alone.
    QCOMPARE(exchange(unit, SerialFrame::shortFrame(0xD5, 0x0A)).first().payload.toHex(), QByteArray("02"));
    // A plain-mode write ("no frames") leaves none.
    exchange(unit, SerialFrame::shortFrame(0x16, 2) + SerialFrame::encode(0xD6, QByteArray(1, '\0')));
    QCOMPARE(exchange(unit, SerialFrame::shortFrame(0xD5, 0x0A)).first().payload.toHex(), QByteArray("00"));
}

void TestVunitUnit::reportLayout_data()
{
    QTest::addColumn<Model>("model");
    QTest::addColumn<int>("block");
    QTest::newRow("alder") << Model::Alder << 30;
    QTest::newRow("birch") << Model::Birch << 14;
    QTest::newRow("cedar") << Model::Cedar << 30;
    QTest::newRow("larch") << Model::Larch << 24;
    QTest::newRow("maple") << Model::Maple << 18;
    QTest::newRow("rowan") << Model::Rowan << 30;
    QTest::newRow("willow") << Model::Willow << 30;
}

void TestVunitUnit::reportLayout()
{
    QFETCH(Model, model);
    QFETCH(int, block);
    UnitConfig config;
    config.model = model;
    UnitModel unit(config);
    QVERIFY(!unit.uploading());
    const QVector<Heard> started = exchange(unit, SerialFrame::startUpload(2));
    QCOMPARE(started.first().payload, QByteArray(1, '\0'));
    QVERIFY(unit.uploading());
    QCOMPARE(unit.reportRateHz(), 50);

    for (qint64 t : { 0, 1234, 98765 }) {
        QVector<Heard> reports;
        FrameCutter cutter;
        cutter.feed(unit.reportFrame(t), [&](quint8 c, const QByteArray &p) { reports.append({ c, p }); });
        QCOMPARE(reports.size(), 1);
        QCOMPARE(reports.first().code, quint8(0xA5));
        QCOMPARE(reports.first().payload.size(), block + 64 + 1);
        QCOMPARE(reports.first().payload.at(0), '\0');
        const Answer page = interpretAnswer(0xA5, reports.first().payload);
        QCOMPARE(page.data.size(), block + 64); // what the model page accepts
        // Control words and both outputs within 0..1200; the key words lie between.
        const QVector<quint16> values
            = words(page.data, 0, unit.layout().controls.size()) + words(page.data, block, 32);
        for (quint16 w : values)
            QVERIFY2(w <= 1200, qPrintable(QStringLiteral("word %1 at t=%2").arg(w).arg(t)));
    }

    // The settings pages' upload carries the two SBUS outputs alone.
    exchange(unit, SerialFrame::startUpload(1));
    QCOMPARE(unit.reportPayload(500).size(), 65);
    exchange(unit, SerialFrame::encode(0xE4));
    QVERIFY(!unit.uploading());
}

void TestVunitUnit::mixing_data()
{
    QTest::addColumn<ChannelSetting>("setting");
    QTest::addColumn<int>("input");
    QTest::addColumn<int>("expected");

    auto s = [](int trim, int left, int right, bool reversed, int map, int none = 0) {
        return ChannelSetting { trim, left, right, reversed, map, none };
    };
    QTest::newRow("150 % passes the input through") << s(0, 150, 150, false, 0) << 1000 << 1000;
    QTest::newRow("100 % full up") << s(0, 100, 100, false, 0) << 1200 << 1000;
    QTest::newRow("reversed mirrors around 600") << s(0, 150, 150, true, 0) << 900 << 300;
    QTest::newRow("left travel for low inputs") << s(0, 50, 150, false, 0) << 0 << 400;
    QTest::newRow("right travel for high inputs") << s(0, 50, 150, false, 0) << 1200 << 1200;
    QTest::newRow("reversed uses the side it lands on") << s(0, 50, 150, true, 0) << 1200 << 400;
    QTest::newRow("left travel 0 holds the centre") << s(0, 0, 100, false, 0) << 100 << 600;
    QTest::newRow("trim shifts the centre") << s(-10, 100, 100, false, 0) << 600 << 560;
    QTest::newRow("trim and travel clamp high") << s(125, 150, 150, false, 0) << 1200 << 1200;
    QTest::newRow("travel beyond 150 counts as 150") << s(0, 255, 255, false, 0) << 0 << 0;
    QTest::newRow("NONE gives the fixed value") << s(0, 100, 100, false, kMapNone, 50) << 0 << 800;
    QTest::newRow("NONE beyond 100 counts as 100") << s(0, 100, 100, false, kMapNone, 127) << 0 << 1000;
    QTest::newRow("NONE reversed") << s(0, 100, 100, true, kMapNone, 25) << 0 << 500;
    QTest::newRow("map past the controls feeds the centre") << s(0, 150, 150, false, 200) << 0 << 600;
}

void TestVunitUnit::mixing()
{
    QFETCH(ChannelSetting, setting);
    QFETCH(int, input);
    QFETCH(int, expected);
    const QVector<quint16> controls { quint16(input), 17, 1111 };
    QCOMPARE(mixChannel(setting, controls), expected);
}

void TestVunitUnit::refusedCodesAnswerEE_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("sbus read") << SerialFrame::shortFrame(0xA3, 0);
    QTest::newRow("identify") << SerialFrame::encode(0xFF);
    QTest::newRow("upload start") << SerialFrame::startUpload(2);
    QTest::newRow("baud write") << SerialFrame::encode(0x14, QByteArray::fromHex("00c20100"));
    QTest::newRow("calibration finish") << SerialFrame::encode(0xE7);
}

void TestVunitUnit::refusedCodesAnswerEE()
{
    QFETCH(QByteArray, request);
    const quint8 code = quint8(request.at(1));
    UnitConfig config;
    config.refused = { code };
    UnitModel unit(config);
    const QByteArray baudBefore = unit.store().value(0x13);
    const QVector<Heard> heard = exchange(unit, request);
    QCOMPARE(heard.size(), 1);
    QCOMPARE(heard.first().code, code);
    QCOMPARE(heard.first().payload.toHex(), QByteArray("ee"));
    // A refused command is not carried out.
    QVERIFY(!unit.uploading());
    QCOMPARE(unit.store().value(0x13), baudBefore);
}

void TestVunitUnit::badRequestsAreIgnored_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("unknown code") << SerialFrame::encode(0x50, QByteArray::fromHex("0102"));
    QTest::newRow("the unit's own report code") << SerialFrame::encode(0xA5, QByteArray(95, '\x01'));
    QTest::newRow("sbus write one byte short") << SerialFrame::encode(0xA4, pattern(84, 1, 0));
    QTest::newRow("sbus write port 2") << SerialFrame::encode(0xA4, pattern(85, 1, 2));
    QTest::newRow("sbus read without port") << SerialFrame::encode(0xA3);
    QTest::newRow("battery without detail") << SerialFrame::encode(0xAD);
    QTest::newRow("throttle hold byte 0 not 0")
        << SerialFrame::encode(0xB7, QByteArray::fromHex("01020101250f16"));
    QTest::newRow("channel hold 9 bytes") << SerialFrame::encode(0xB5, QByteArray(9, '\0'));
    QTest::newRow("baud 3 bytes") << SerialFrame::encode(0x14, QByteArray::fromHex("00c201"));
    QTest::newRow("can frame of 10 bytes") << SerialFrame::encode(0xD6, QByteArray(10, '\x01'));
    QTest::newRow("can frame index past count")
        << SerialFrame::encode(0xD6, QByteArray::fromHex("0202230100000000000008"));
    QTest::newRow("upload start without rate") << SerialFrame::shortFrame(0xE5, 2);
    QTest::newRow("empty group write") << SerialFrame::encode(0xD8);
    // The SBUS control frame with a short payload has its trailer inside.
    QTest::newRow("short fixed control frame")
        << SerialFrame::fixedControlFrame(QByteArray::fromHex("0a0b0c"));
}

void TestVunitUnit::badRequestsAreIgnored()
{
    QFETCH(QByteArray, request);
    UnitModel unit(UnitConfig {});
    QStringList notes;
    QCOMPARE(exchange(unit, request, &notes).size(), 0);
    QCOMPARE(notes.size(), 1);
    QVERIFY(!unit.uploading());
    // Still answering, with its factory values.
    const QVector<Heard> after = exchange(unit, SerialFrame::shortFrame(0xA3, 0) + SerialFrame::encode(0xD7));
    QCOMPARE(after.size(), 2);
    QCOMPARE(after.at(0).payload, UnitModel(UnitConfig {}).store().sbusTuning(0));
}

QTEST_APPLESS_MAIN(TestVunitUnit)
#include "tst_vunit_unit.moc"
