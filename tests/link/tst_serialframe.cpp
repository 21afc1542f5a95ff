#include "SerialFrame.h"

#include <QtTest>

class TestSerialFrame : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void requestShapes_data();
    void requestShapes();
};

void TestSerialFrame::requestShapes_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("bare identify") << SerialFrame::encode(0xFF) << QByteArray::fromHex("faff00005f");
    QTest::newRow("bare stop upload") << SerialFrame::encode(0xE4) << QByteArray::fromHex("fae400005f");
    QTest::newRow("short sbus read port 1") << SerialFrame::shortFrame(0xA3, 1) << QByteArray::fromHex("faa30100015f");
    QTest::newRow("short takes first byte") << SerialFrame::shortFrame(0x18, QByteArray::fromHex("0207"))
                                            << QByteArray::fromHex("fa180100025f");
    QTest::newRow("short of empty payload sends 0") << SerialFrame::shortFrame(0xC5, QByteArray())
                                                    << QByteArray::fromHex("fac50100005f");
    QTest::newRow("long payload with header and trailer bytes")
        << SerialFrame::encode(0xB5, QByteArray::fromHex("00fa5f0180"))
        << QByteArray::fromHex("fab5050000fa5f01805f");
    QByteArray big(300, '\x11');
    QTest::newRow("length is little-endian") << SerialFrame::encode(0xA4, big).left(4)
                                             << QByteArray::fromHex("faa42c01");
    QTest::newRow("upload start for the model page") << SerialFrame::startUpload(2)
                                                     << QByteArray::fromHex("fae50200 02325f");
    QTest::newRow("upload start for a settings page") << SerialFrame::startUpload(1)
                                                      << QByteArray::fromHex("fae5020001325f");
    // The SBUS control write is always 12 bytes with a length field of 7.
    QTest::newRow("0x35 full payload") << SerialFrame::fixedControlFrame(QByteArray::fromHex("01020304050607"))
                                       << QByteArray::fromHex("fa35070001020304050607 5f");
    QTest::newRow("0x35 short payload: trailer right behind it")
        << SerialFrame::fixedControlFrame(QByteArray::fromHex("0a0b0c"))
        << QByteArray::fromHex("fa3507000a0b0c5f00000000");
    QTest::newRow("0x35 empty payload") << SerialFrame::fixedControlFrame(QByteArray())
                                        << QByteArray::fromHex("fa3507005f00000000000000");
    QTest::newRow("0x35 long payload cut to seven")
        << SerialFrame::fixedControlFrame(QByteArray::fromHex("0102030405060708"))
        << QByteArray::fromHex("fa350700010203040506075f");
}

void TestSerialFrame::requestShapes()
{
    QFETCH(QByteArray, frame);
    QFETCH(QByteArray, expected);
    QCOMPARE(frame.toHex(' '), expected.toHex(' '));
}

QTEST_APPLESS_MAIN(TestSerialFrame)
#include "tst_serialframe.moc"
