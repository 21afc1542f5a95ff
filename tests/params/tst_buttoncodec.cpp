// The keys' three groups on the wire and in the parameter file.
#include "ButtonCodec.h"
#include "DeviceData.h"
#include "ParameterFile.h"

#include <QtTest>

using ButtonCodec::Settings;

namespace
{

constexpr int kLarch = 3;

// Keys by index, 255 = "NONE"; super key values signed; key kinds 0..2 with
// keys 16..24 three-state so that the Larch order shows.
const char kSample[] = "<ckeyMap>0,1,10;2,3,5;255,255,1;7,255,100;255,0,0;</ckeyMap>\r\n"
                       "<sckeyMap>4,5,255,255,255,255,-37,100,0,0,0,-150;"
                       "255,255,255,255,255,255,0,0,0,0,0,150;</sckeyMap>\r\n"
                       "<keyGear>0,1,0,1,0,1,0,1,0,1,0,1,0,1,0,2,2,2,2,2,2,2,2,2;</keyGear>\r\n";

Settings sample()
{
    DeviceData d;
    ParameterFile::loadBytes(QByteArray("<body>") + kSample + "</body>", d);
    return Settings::fromRecord(d);
}

// A record whose key groups hold 9 everywhere, so that any entry an answer
// touches shows.
DeviceData nines()
{
    DeviceData d;
    std::fill(&d.ckeyMap[0][0], &d.ckeyMap[0][0] + 15, 9);
    std::fill(&d.sckeyMap[0][0], &d.sckeyMap[0][0] + 24, 9);
    std::fill(d.keyGear, d.keyGear + 24, 9);
    return d;
}

} // namespace

class TestButtonCodec : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void payloadsAreByteExact_data();
    void payloadsAreByteExact();
    void answersFillTheRecord_data();
    void answersFillTheRecord();
    void fragmentIsByteExact();
};

void TestButtonCodec::payloadsAreByteExact_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("hex");
    QTest::newRow("combination keys") << 0 << 0
                                      << QByteArray("00010a"
                                                    "020305"
                                                    "ffff01"
                                                    "07ff64"
                                                    "ff0000");
    // -37 goes as sign 1 and magnitude 37.
    QTest::newRow("super keys") << 0 << 1
                                << QByteArray("0405ffffffff"
                                              "010000000001"
                                              "256400000096"
                                              "ffffffffffff"
                                              "000000000000"
                                              "000000000096");
    QTest::newRow("key kinds: keys 1..12") << 0 << 2 << QByteArray("000100010001000100010001");
    QTest::newRow("Larch key kinds: 16..24 first") << kLarch << 2
                                                   << QByteArray("020202020202020202"
                                                                 "000100010001000100010001000100");
}

void TestButtonCodec::payloadsAreByteExact()
{
    QFETCH(int, model);
    QFETCH(int, index);
    QFETCH(QByteArray, hex);
    const QList<QByteArray> payloads = ButtonCodec::payloads(sample(), model);
    QCOMPARE(payloads.size(), 3);
    QCOMPARE(payloads.at(index).toHex(), hex);
}

void TestButtonCodec::answersFillTheRecord_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("model");
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<bool>("taken");
    QTest::addColumn<QString>("line");
    const QString nineCombos = "<ckeyMap>9,9,9;9,9,9;9,9,9;9,9,9;9,9,9;</ckeyMap>\r\n";
    const QString nineSuper = "<sckeyMap>9,9,9,9,9,9,9,9,9,9,9,9;9,9,9,9,9,9,9,9,9,9,9,9;</sckeyMap>\r\n";
    QTest::newRow("combinations, 0xFF is NONE")
        << 5 << 0 << QByteArray("00010aff0305ffff0107ff64ff00c8") << true
        << "<ckeyMap>0,1,10;255,3,5;255,255,1;7,255,100;255,0,200;</ckeyMap>\r\n";
    QTest::newRow("combinations of 16 bytes change nothing")
        << 5 << 0 << QByteArray(32, '0') << false << nineCombos;
    // Any non-zero sign byte makes the value negative.
    QTest::newRow("super keys") << 7 << 0
                                << QByteArray("0405ffffffff"
                                              "010000008001"
                                              "256400000a96"
                                              "ffffffffffff"
                                              "000000000000"
                                              "000000000096")
                                << true
                                << "<sckeyMap>4,5,255,255,255,255,-37,100,0,0,-10,-150;"
                                   "255,255,255,255,255,255,0,0,0,0,0,150;</sckeyMap>\r\n";
    QTest::newRow("super keys of 35 bytes change nothing")
        << 7 << 0 << QByteArray(70, '0') << false << nineSuper;
    QTest::newRow("key kinds set the keys they carry")
        << 15 << 0 << QByteArray("0201") << true
        << "<keyGear>2,1,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9;"
           "</keyGear>\r\n";
    QTest::newRow("Larch: bytes 0..8 are keys 16..24")
        << 15 << kLarch
        << QByteArray("020202020202020202"
                      "010101010101010101010101010101")
        << true
        << "<keyGear>1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,2,2,2,2,2,2,2,2,2;"
           "</keyGear>\r\n";
    QTest::newRow("no key kinds")
        << 15 << 0 << QByteArray() << false
        << "<keyGear>9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9,9;</keyGear>\r\n";
}

void TestButtonCodec::answersFillTheRecord()
{
    QFETCH(int, code);
    QFETCH(int, model);
    QFETCH(QByteArray, hex);
    QFETCH(bool, taken);
    QFETCH(QString, line);
    DeviceData d = nines();
    const QByteArray payload = QByteArray::fromHex(hex);
    const bool decoded = code == 5 ? ButtonCodec::decodeCombinations(payload, d)
        : code == 7                ? ButtonCodec::decodeSuperKeys(payload, d)
                                   : ButtonCodec::decodeKeyKinds(payload, model, d);
    QCOMPARE(decoded, taken);
    QVERIFY2(ButtonCodec::fileFragment(Settings::fromRecord(d)).contains(line), qPrintable(line));
}

// Read from the file and written again, the fragment comes back byte for byte.
void TestButtonCodec::fragmentIsByteExact()
{
    QCOMPARE(ButtonCodec::fileFragment(sample()), QString::fromLatin1(kSample));
}

QTEST_APPLESS_MAIN(TestButtonCodec)
#include "tst_buttoncodec.moc"
