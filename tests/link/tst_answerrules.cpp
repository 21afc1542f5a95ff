#include "AnswerRules.h"

#include <QtTest>

namespace {
QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// What the unit's answers do, code by code, written out independently of the
// implementation's table: the CodeID handed on (-1: nothing) and the text
// logged when the unit refuses.
struct Row {
    quint8 code;
    int codeId;
    const char *failure;
};

const Row kReadAndWriteRows[] = {
    { 0xFE, 0, "读取调参数据失败" },         { 0xA3, 1, "读取调参数据失败" },
    { 0xA4, -1, "写入调参数据失败" },        { 0xAD, 4, "读取电池电量错误" },
    { 0xC0, 5, "读取组合键及单步增量错误" }, { 0xC1, -1, "写入组合键及单步增量错误" },
    { 0xC2, 7, "读取超级组合键错误" },       { 0xC3, -1, "写入超级组合键错误" },
    { 0xC4, 9, "读取SBUS输出状态错误" },     { 0xC5, -1, "写入SBUS输出状态错误" },
    { 0xC6, 11, "读取HID映射值错误" },       { 0xC7, -1, "写入HID映射值错误" },
    { 0xCA, 15, "读取按键属性错误" },        { 0xCB, -1, "写入按键属性错误" },
    { 0xA7, 17, "读取调参数据None错误" },    { 0xA8, -1, "写入调参数据None错误" },
    { 0xB4, 19, "通道保持读取错误" },        { 0xB5, -1, "通道保持写入错误" },
    { 0xB6, 21, "油门保持读取错误" },        { 0xB7, -1, "油门保持写入错误" },
    { 0xE4, -1, "停止通道数据上传失败" },    { 0xE5, -1, "开始通道数据上传失败" },
    { 0xE8, -1, "空闲报警写入失败" },        { 0xE9, 26, "空闲报警读取失败" },
    { 0xEA, -1, "恢复出厂设置错误" },        { 0xEB, 29, "读取低压报警电压错误" },
    { 0xEC, -1, "低压报警电压写入错误" },    { 0xED, -1, "对外充电控制指令写入错误" },
    { 0xEE, 32, "对外充电控制指令读取错误" }, { 0x13, 36, "读取波特率错误" },
    { 0x14, -1, "写入波特率错误" },          { 0x15, 38, "code_15错误" },
    { 0x16, 39, "code_16错误" },             { 0x17, 40, "读取HID输出状态错误" },
    { 0x18, -1, "写入HID输出状态错误" },     { 0x19, 42, "读取外部sbus输入状态错误" },
    { 0x1A, -1, "写入外部sbus输入状态错误" },
};
} // namespace

class TestAnswerRules : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void everyCode_data();
    void everyCode();
    void specialAnswers_data();
    void specialAnswers();
    void onlyCodesInRangeAreConsidered();
    void scanResumesBehindFrameExceptModuleKindAndUnused();
};

void TestAnswerRules::everyCode_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("codeId");
    QTest::addColumn<QString>("failure");

    for (const Row &row : kReadAndWriteRows)
        QTest::addRow("0x%02X", row.code) << int(row.code) << row.codeId << QString::fromUtf8(row.failure);
    auto groupText = [](int c) { return QStringLiteral("code_%1错误").arg(QString::number(c, 16).toUpper()); };
    for (int c = 0xD1; c <= 0xDE; ++c)
        QTest::addRow("0x%02X", c) << c << 44 + (c - 0xD1) << groupText(c);
    for (int c = 0x20; c <= 0x27; ++c) {
        if (c != 0x26)
            QTest::addRow("0x%02X", c) << c << 59 + (c - 0x20) << groupText(c);
    }
    for (int c = 0x30; c <= 0x39; ++c)
        QTest::addRow("0x%02X", c) << c << 68 + (c - 0x30) << groupText(c);
}

// For each code: a normal answer hands on the whole payload (or nothing for a
// write), a refusal hands on nothing and logs the code's own text.
void TestAnswerRules::everyCode()
{
    QFETCH(int, code);
    QFETCH(int, codeId);
    QFETCH(QString, failure);

    const QByteArray ok = hex("00112233");
    const Answer normal = interpretAnswer(quint8(code), ok);
    QCOMPARE(normal.emits, codeId >= 0);
    if (codeId >= 0) {
        QCOMPARE(int(normal.codeId), codeId);
        QCOMPARE(normal.data, ok);
    }
    QVERIFY(normal.failureText.isEmpty());

    // A first byte other than 0xEE is no refusal, even for reads.
    const Answer odd = interpretAnswer(quint8(code), hex("0501"));
    QCOMPARE(odd.emits, codeId >= 0);

    const Answer refused = interpretAnswer(quint8(code), hex("ee01"));
    QVERIFY(!refused.emits);
    QCOMPARE(refused.failureText, failure);
}

void TestAnswerRules::specialAnswers_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<int>("codeId"); // -1: nothing handed on
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("failure");

    QTest::newRow("report drops its first byte") << 0xA5 << hex("00aabbcc") << 3 << hex("aabbcc") << QString();
    QTest::newRow("report is not checked for refusal") << 0xA5 << hex("ee01") << 3 << hex("01") << QString();
    QTest::newRow("empty report") << 0xA5 << QByteArray() << 3 << QByteArray() << QString();
    QTest::newRow("calibration start ok") << 0xE6 << hex("00") << 23 << QByteArray() << QString();
    QTest::newRow("calibration start refused") << 0xE6 << hex("ee") << -1 << QByteArray()
                                               << QStringLiteral("请求通道校准失败");
    QTest::newRow("calibration start other status") << 0xE6 << hex("01") << -1 << QByteArray() << QString();
    QTest::newRow("calibration finish ok") << 0xE7 << hex("000102") << 24 << hex("000102") << QString();
    // A failed finish still ends the model page's calibration display.
    QTest::newRow("calibration finish refused") << 0xE7 << hex("ee0102") << 24 << hex("ee")
                                                << QStringLiteral("请求完成校准失败");
    QTest::newRow("calibration finish other status") << 0xE7 << hex("02") << -1 << QByteArray() << QString();
    QTest::newRow("ground reset one byte") << 0x11 << hex("01") << 34 << hex("01") << QString();
    QTest::newRow("ground reset two bytes") << 0x11 << hex("0101") << -1 << QByteArray() << QString();
    QTest::newRow("air reset one byte") << 0x12 << hex("02") << 35 << hex("02") << QString();
    QTest::newRow("air reset empty") << 0x12 << QByteArray() << -1 << QByteArray() << QString();
    QTest::newRow("empty read answer") << 0xA3 << QByteArray() << 1 << QByteArray() << QString();
    QTest::newRow("unused code") << 0x05 << hex("00") << -1 << QByteArray() << QString();
}

void TestAnswerRules::specialAnswers()
{
    QFETCH(int, code);
    QFETCH(QByteArray, payload);
    QFETCH(int, codeId);
    QFETCH(QByteArray, data);
    QFETCH(QString, failure);

    const Answer a = interpretAnswer(quint8(code), payload);
    QCOMPARE(a.emits, codeId >= 0);
    if (codeId >= 0) {
        QCOMPARE(int(a.codeId), codeId);
        QCOMPARE(a.data.toHex(), data.toHex());
    }
    QCOMPARE(a.failureText, failure);
}

void TestAnswerRules::onlyCodesInRangeAreConsidered()
{
    for (int c = 0; c < 256; ++c) {
        const bool inRange = (c >= 0xA3) || (c <= 0x39);
        QCOMPARE(codeInfo(quint8(c)).kind != AnswerKind::OutOfRange, inRange);
    }

    // Module kind 0, 1, 2 is taken; anything else leaves it.
    QCOMPARE(interpretAnswer(0xDF, hex("02")).moduleKind, 2);
    QCOMPARE(interpretAnswer(0xDF, hex("00")).moduleKind, 0);
    QCOMPARE(interpretAnswer(0xDF, hex("03")).moduleKind, -1);
    QVERIFY(interpretAnswer(0xDF, hex("03")).moduleAnswer);
    QCOMPARE(interpretAnswer(0xDF, QByteArray()).moduleKind, -1);

    const Answer id = interpretAnswer(0xFF, QByteArray("ROWANxyz"));
    QVERIFY(id.identify);
    QCOMPARE(id.identifier, QStringLiteral("ROWAN"));
    QVERIFY(!id.emits);
    QCOMPARE(interpretAnswer(0xFF, QByteArray("ROW")).identifier, QStringLiteral("ROW"));

    const Answer can = interpretAnswer(0x26, hex("0102"));
    QVERIFY(can.showCanWindow && can.canWindowGetsData && !can.emits);
    // A refused CAN answer still opens the window, empty; the text has a blank.
    const Answer canRefused = interpretAnswer(0x26, hex("ee"));
    QVERIFY(canRefused.showCanWindow && !canRefused.canWindowGetsData);
    QCOMPARE(canRefused.failureText, QStringLiteral("code_26 错误"));
}

void TestAnswerRules::scanResumesBehindFrameExceptModuleKindAndUnused()
{
    QVERIFY(!resumesBehindFrame(0xDF));
    QVERIFY(!resumesBehindFrame(0x05));
    QVERIFY(!resumesBehindFrame(0xEF));
    QVERIFY(resumesBehindFrame(0xA3));
    QVERIFY(resumesBehindFrame(0xFF));
    QVERIFY(resumesBehindFrame(0x26));
}

QTEST_APPLESS_MAIN(TestAnswerRules)
#include "tst_answerrules.moc"
