// The custom output page as a user drives it: fields that clamp and pad,
// the output mode toggles, the frame editors and their mapping windows, and
// the frame list changing under open editors.
#include "AppPaths.h"
#include "CanFrame.h"
#include "CustomConfig.h"
#include "DataWidget.h"
#include "DeviceData.h"
#include "MCheckBox.h"
#include "Messages.h"
#include "PageHost.h"
#include "ParameterFile.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QtTest>

namespace
{

struct TestHost : PageHost {
    DeviceData data;
    DeviceData &deviceData() override { return data; }
    int currentModel() const override { return 0; }
    QString dialogStyleSheet() const override { return QString(); }
    void showHub() override { }
    void showModelPage() override { }
};

template <typename T> T *child(QWidget *parent, const QString &name)
{
    return parent->findChild<T *>(name);
}

void clickBox(MCheckBox *box)
{
    QTest::mouseClick(box, Qt::LeftButton, Qt::NoModifier, QPoint(box->height() / 2, box->height() / 2));
}

void type(QLineEdit *edit, const QString &text)
{
    edit->clear();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

void flushDeletes()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class TestCustomConfig : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void fieldsClampAndPad_data();
    void fieldsClampAndPad();
    void sbusModeGreysTheOutputSwitches();
    void eleventhFrameIsNotAdded();
    void mappingIsSavedOnlyWhenConfirmed_data();
    void mappingIsSavedOnlyWhenConfirmed();
    void deletingAFrameClosesItsMapping();
    void shrinkingListTakesOpenEditors_data();
    void shrinkingListTakesOpenEditors();
    void everyControlGoesOutByteForByte();
    void answersLeaveOtherEditsAlone_data();
    void answersLeaveOtherEditsAlone();
    void switchesSurviveARefreshAndGoToTheFile();

private:
    CanFrame *editor(int i) const { return m_page->frameEditors().value(i); }
    DataWidget *openMapping(int frame);
    // Every control of the page with what it shows.
    QMap<QString, QString> shown() const;
    // A user's distinct value in every control; two frames.
    void editEverything();

    TestHost m_host;
    CustomConfig *m_page = nullptr;
    QList<Messages::Shown> m_shown;
    bool m_answer = true;
};

void TestCustomConfig::initTestCase()
{
    AppPaths::setAppDir(QStringLiteral(QM_SOURCE_DIR));
    Messages::setResponder([this](const Messages::Shown &shown) {
        m_shown.append(shown);
        return m_answer;
    });
}

void TestCustomConfig::init()
{
    m_host.data = DeviceData();
    m_host.data.PyxGOutputMode = 2;
    m_host.data.TTLEnable = true;
    m_host.data.CANEnable = true;
    m_shown.clear();
    m_answer = true;
    m_page = new CustomConfig;
    m_page->refreshFromRecord();
    m_page->resize(1000, 900);
    m_page->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_page));
}

void TestCustomConfig::cleanup()
{
    delete m_page;
    flushDeletes();
}

DataWidget *TestCustomConfig::openMapping(int frame)
{
    QTest::mouseClick(child<QPushButton>(editor(frame), "dataPrase"), Qt::LeftButton);
    return editor(frame)->dataWidget();
}

void TestCustomConfig::fieldsClampAndPad_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("stored");
    const auto row
        = [](const char *name, const char *field, const char *typed, const char *shown, int stored) {
              QTest::newRow(name) << QString(field) << QString(typed) << QString(shown) << stored;
          };
    row("CAN frequency 5", "canFre", "5", "10", 10);
    row("CAN frequency 999", "canFre", "999", "200", 200);
    row("minimum -20000", "ttlMin", "-20000", "-10000", 0xD8F0);
    row("maximum 20000", "ttlMax", "20000", "10000", 10000);
    row("frame head a", "ttlFrameHead", "a", "0A", 0x0A);
    row("frame end G refused", "ttlFrameEnd", "5G", "05", 0x05);
    row("standard id 7", "stdId", "7", "0007", 7);
    row("standard id FFFF", "stdId", "ffff", "FFFF", 0xFFFF);
    row("extended id 1", "extId", "1", "00000001", 1);
}

void TestCustomConfig::fieldsClampAndPad()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(int, stored);
    QTest::mouseClick(child<QPushButton>(m_page, "addFrame"), Qt::LeftButton);
    QLineEdit *edit = child<QLineEdit>(m_page, field);
    type(edit, typed);
    QCOMPARE(edit->text(), shown);

    const DeviceData &d = m_host.data;
    const QHash<QString, int> stores {
        { "canFre", d.CANFrequency },
        { "ttlFre", d.TTLStream.header[0] },
        { "ttlMin", d.TTLStream.range[0] },
        { "ttlMax", d.TTLStream.range[1] },
        { "ttlFrameHead", d.TTLStream.header[1] },
        { "ttlFrameEnd", d.TTLStream.header[2] },
        { "stdId", d.canFrames.at(0).standardId },
        { "extId", int(d.canFrames.at(0).extendedId) },
    };
    QCOMPARE(stores.value(field), stored);
}

void TestCustomConfig::sbusModeGreysTheOutputSwitches()
{
    auto *sbus = child<MCheckBox>(m_page, "canOutputMode_0");
    auto *ttl = child<MCheckBox>(m_page, "canOutputMode_1");
    auto *can = child<MCheckBox>(m_page, "canEnable");
    auto *serial = child<MCheckBox>(m_page, "ttlEnable");
    QVERIFY(ttl->checked() && can->checked() && serial->checked());

    clickBox(sbus);
    QCOMPARE(m_host.data.PyxGOutputMode, 1);
    QVERIFY(!m_host.data.CANEnable && !m_host.data.TTLEnable);
    QVERIFY(sbus->checked() && !ttl->checked());
    QVERIFY(!can->checked() && !can->checkEnable());
    QVERIFY(!serial->checked() && !serial->checkEnable());
    QCOMPARE(m_shown.size(), 1);
    QCOMPARE(m_shown.at(0).title, QStringLiteral("Warning"));
    QCOMPARE(m_shown.at(0).text, QStringLiteral("注意: 切换硬件接口前,请确保当前接口线已断开连接!!!"));

    // A "no" keeps the choice; RS232 makes the switches available, still off.
    m_answer = false;
    clickBox(child<MCheckBox>(m_page, "canOutputMode_2"));
    QCOMPARE(m_host.data.PyxGOutputMode, 3);
    QVERIFY(!sbus->checked());
    QVERIFY(!can->checked() && can->checkEnable());
    QVERIFY(!serial->checked() && serial->checkEnable());
    QCOMPARE(m_shown.size(), 2);
}

void TestCustomConfig::eleventhFrameIsNotAdded()
{
    auto *add = child<QPushButton>(m_page, "addFrame");
    for (int i = 0; i < 11; ++i)
        QTest::mouseClick(add, Qt::LeftButton);
    QCOMPARE(m_host.data.canFrames.size(), 10);
    QCOMPARE(int(m_host.data.CANFrameCnt), 10);
    QCOMPARE(m_page->frameEditors().size(), 10);
    QCOMPARE(m_page->findChildren<CanFrame *>().size(), 10);
}

void TestCustomConfig::mappingIsSavedOnlyWhenConfirmed_data()
{
    QTest::addColumn<bool>("confirm");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

// Bytes 1 and 8 in use count a length of 2; byte 1 mapped to "NONE" is kept
// as 254 and shows "NONE" again when the window opens anew.
void TestCustomConfig::mappingIsSavedOnlyWhenConfirmed()
{
    QFETCH(bool, confirm);
    m_host.data.pyxChannelNames = QStringList { "T1", "T2" };
    m_host.data.pyxBitNames = QStringList { "SA", "SB" };
    QTest::mouseClick(child<QPushButton>(m_page, "addFrame"), Qt::LeftButton);
    DataWidget *mapping = openMapping(0);
    QVERIFY(mapping && mapping->isVisible());
    QCOMPARE(mapping->windowTitle(), QStringLiteral("数据解析 - 0"));

    child<QCheckBox>(mapping, "dataConfig_1")->click();
    child<QCheckBox>(mapping, "dataConfig_8")->click();
    clickBox(child<MCheckBox>(mapping, "dataNonlinear_8"));
    child<QComboBox>(mapping, "bitChannel_3")->setCurrentIndex(1); // SB
    child<QComboBox>(mapping, "dataIndex")->setCurrentIndex(0);
    auto *channel = child<QComboBox>(mapping, "channelMap");
    QVERIFY(channel->isEnabled());
    channel->setCurrentIndex(channel->count() - 1);
    QCOMPARE(channel->currentText(), QStringLiteral("NONE"));

    m_answer = confirm;
    QTest::mouseClick(child<QPushButton>(mapping, "canRestore"), Qt::LeftButton);
    QCOMPARE(m_shown.last().title, QStringLiteral("保存数据解析"));
    QCOMPARE(m_shown.last().text, QStringLiteral("确认要保存数据解析吗！"));
    const CanFrameRecord &f = m_host.data.canFrames.at(0);
    QCOMPARE(int(f.dlc), confirm ? 2 : 0);
    QCOMPARE(int(f.dataMask), confirm ? 0x81 : 0);
    QCOMPARE(int(f.nonlinearMask), confirm ? 0x80 : 0);
    QCOMPARE(int(f.byteMap[0][1]), confirm ? 254 : 0);
    QCOMPARE(int(f.bitMap[7][3][0]), confirm ? 1 : 0);
    QCOMPARE(child<QLineEdit>(editor(0), "dataLength")->text(),
        confirm ? QStringLiteral("2") : QStringLiteral("0"));

    QTest::mouseClick(child<QPushButton>(mapping, "canReturn"), Qt::LeftButton);
    QVERIFY(!mapping->isVisible());
    mapping = openMapping(0);
    QCOMPARE(child<QComboBox>(mapping, "channelMap")->currentText(),
        confirm ? QStringLiteral("NONE") : QStringLiteral("T1"));
    QCOMPARE(child<QCheckBox>(mapping, "dataConfig_8")->isChecked(), confirm);
}

void TestCustomConfig::deletingAFrameClosesItsMapping()
{
    for (int i = 0; i < 3; ++i)
        QTest::mouseClick(child<QPushButton>(m_page, "addFrame"), Qt::LeftButton);
    m_host.data.canFrames[2].standardId = 0x333;
    m_page->refreshFromRecord();
    QPointer<DataWidget> second = openMapping(1);
    QPointer<DataWidget> third = openMapping(2);
    QPointer<CanFrame> gone = editor(1);

    QTest::mouseClick(child<QPushButton>(editor(1), "delFrame"), Qt::LeftButton);
    flushDeletes();
    QVERIFY(!gone && !second);
    QCOMPARE(m_host.data.canFrames.size(), 2);
    QCOMPARE(int(m_host.data.CANFrameCnt), 2);
    // The third frame moved up, with its editor and its open window.
    QCOMPARE(m_host.data.canFrames.at(1).index, 1);
    QCOMPARE(child<QLineEdit>(editor(1), "stdId")->text(), QStringLiteral("0333"));
    QVERIFY(third && third->isVisible());
    QCOMPARE(third->windowTitle(), QStringLiteral("数据解析 - 1"));
}

void TestCustomConfig::shrinkingListTakesOpenEditors_data()
{
    QTest::addColumn<bool>("fromFile");
    QTest::newRow("parameter file with one frame") << true;
    QTest::newRow("unit answers one frame") << false;
}

// A mapping window of a frame that goes may be asked to save later: it must
// go with its frame, not write into one that is no longer there.
void TestCustomConfig::shrinkingListTakesOpenEditors()
{
    QFETCH(bool, fromFile);
    for (int i = 0; i < 3; ++i)
        QTest::mouseClick(child<QPushButton>(m_page, "addFrame"), Qt::LeftButton);
    QPointer<DataWidget> first = openMapping(0);
    QPointer<DataWidget> last = openMapping(2);
    QPointer<CanFrame> lastEditor = editor(2);

    if (fromFile) {
        ParameterFile::loadBytes(
            ParameterFile::join({ "<CANFrameCnt>1</CANFrameCnt>\r\n" }).toUtf8(), m_host.data);
        m_page->refreshFromRecord();
    } else {
        m_page->slot_information(CustomOutputD5, QByteArray(1, '\x01'));
    }
    QVERIFY(last && !last->isVisible()); // closed at once, deleted later
    flushDeletes();
    QVERIFY(!last && !lastEditor);
    QVERIFY(first);
    QCOMPARE(m_page->frameEditors().size(), 1);
    QCOMPARE(m_host.data.canFrames.size(), 1);
}

QMap<QString, QString> TestCustomConfig::shown() const
{
    QMap<QString, QString> out;
    for (int k = 0; k < 3; ++k) {
        if (child<MCheckBox>(m_page, QStringLiteral("canOutputMode_%1").arg(k))->checked())
            out["mode"] += QString::number(k);
    }
    for (const char *name : { "canEnable", "ttlEnable" })
        out[name] = child<MCheckBox>(m_page, name)->checked() ? "on" : "off";
    for (const char *name : { "canFre", "ttlFre", "ttlFrameHead", "ttlFrameEnd", "ttlMin", "ttlMax" })
        out[name] = child<QLineEdit>(m_page, name)->text();
    for (const char *name : { "canBaud", "ttlBaud", "ttlFormat", "ttlCheck" })
        out[name] = child<QComboBox>(m_page, name)->currentText();
    for (int i = 0; i < m_page->frameEditors().size(); ++i) {
        const QString frame = QStringLiteral("frame%1.").arg(i);
        for (const char *name : { "stdId", "extId", "dataLength" })
            out[frame + name] = child<QLineEdit>(editor(i), name)->text();
        for (const char *name : { "ide", "rtr" })
            out[frame + name] = child<QComboBox>(editor(i), name)->currentText();
    }
    return out;
}

void TestCustomConfig::editEverything()
{
    m_host.data.TTLEnable = false;
    m_host.data.CANEnable = false;
    m_host.data.pyxChannelNames = QStringList { "T1", "T2", "T3" };
    m_host.data.pyxBitNames = QStringList { "SA", "SB", "SC" };
    m_page->refreshFromRecord();

    clickBox(child<MCheckBox>(m_page, "canOutputMode_2")); // RS232
    clickBox(child<MCheckBox>(m_page, "canEnable"));
    clickBox(child<MCheckBox>(m_page, "ttlEnable"));
    child<QComboBox>(m_page, "canBaud")->setCurrentIndex(6); // 800K
    type(child<QLineEdit>(m_page, "canFre"), "123");
    type(child<QLineEdit>(m_page, "ttlFre"), "77");
    type(child<QLineEdit>(m_page, "ttlFrameHead"), "ab");
    type(child<QLineEdit>(m_page, "ttlFrameEnd"), "cd");
    type(child<QLineEdit>(m_page, "ttlMin"), "-1234");
    type(child<QLineEdit>(m_page, "ttlMax"), "4321");
    child<QComboBox>(m_page, "ttlBaud")->setCurrentIndex(5); // 230400
    child<QComboBox>(m_page, "ttlFormat")->setCurrentIndex(1); // big-endian
    child<QComboBox>(m_page, "ttlCheck")->setCurrentIndex(2); // CRC16

    for (int i = 0; i < 2; ++i)
        QTest::mouseClick(child<QPushButton>(m_page, "addFrame"), Qt::LeftButton);
    type(child<QLineEdit>(editor(0), "stdId"), "1a5");
    type(child<QLineEdit>(editor(1), "stdId"), "7fe");
    type(child<QLineEdit>(editor(1), "extId"), "18ff50e5");
    child<QComboBox>(editor(1), "ide")->setCurrentIndex(1);
    child<QComboBox>(editor(1), "rtr")->setCurrentIndex(1);

    // Frame 0: byte 1 whole from T3, byte 3 bit by bit (bit 0 SB, bit 5 SC).
    DataWidget *mapping = openMapping(0);
    child<QCheckBox>(mapping, "dataConfig_1")->click();
    child<QCheckBox>(mapping, "dataConfig_3")->click();
    clickBox(child<MCheckBox>(mapping, "dataNonlinear_3"));
    child<QComboBox>(mapping, "bitChannel_0")->setCurrentIndex(1);
    child<QComboBox>(mapping, "bitChannel_5")->setCurrentIndex(2);
    child<QComboBox>(mapping, "dataIndex")->setCurrentIndex(0);
    child<QComboBox>(mapping, "channelMap")->setCurrentIndex(2);
    QTest::mouseClick(child<QPushButton>(mapping, "canRestore"), Qt::LeftButton);
    QTest::mouseClick(child<QPushButton>(mapping, "canReturn"), Qt::LeftButton);
}

// Every control set by hand, every payload of the write written out by hand:
// a control that feeds the wrong byte, or none, shows here.
void TestCustomConfig::everyControlGoesOutByteForByte()
{
    editEverything();
    const auto hex = [](const char *text) { return QByteArray::fromHex(text); };
    const QByteArray zeros16(16, '\0');
    const QByteArray zeros64(64, '\0');
    const QList<QByteArray> expected {
        hex("03"), // RS232
        hex("11"), // serial stream and CAN on
        hex("7b"), // 123 Hz
        hex("0200a50100000000000002"), // frame 0: 0x1A5, standard data frame, 2 bytes in use
        hex("0201fe07e550ff18040200"), // frame 1: 0x7FE, 0x18FF50E5, extended, remote
        hex("4dabcda52efbe110"), // 77 Hz, 0xAB, 0xCD, 230400 CRC16 big-endian, -1234, 4321
        hex("28") + QByteArray(45, '\0'),
        hex("000504") + zeros16, // bytes 1 and 3 in use, byte 3 bit by bit
        hex("010000") + zeros16, hex("00") + zeros16 + hex("0100000000020000") + QByteArray(40, '\0'),
        hex("01") + zeros64, hex("00") + zeros64, hex("01") + zeros64,
        hex("000200000000000000"), // byte 1 from T3
        hex("01") + QByteArray(8, '\0'),
        hex("06"), // 800K
    };
    const QList<QByteArray> payloads = m_page->collectPayloads();
    QCOMPARE(payloads.size(), expected.size());
    for (int i = 0; i < payloads.size(); ++i)
        QCOMPARE(payloads.at(i).toHex(' '), expected.at(i).toHex(' '));
    // The write-all of a loaded file sends the same from the record.
    QCOMPARE(m_page->payloadsFromRecord(), payloads);
}

void TestCustomConfig::answersLeaveOtherEditsAlone_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QStringList>("carried"); // control=value the answer shows
    const auto hex = [](const char *text) { return QByteArray::fromHex(text); };
    QTest::newRow("38 output mode TTL") << int(OutputModuleRead) << hex("02") << QStringList { "mode=1" };
    QTest::newRow("44 enable flags") << int(CustomOutputD1) << hex("00")
                                     << QStringList { "canEnable=off", "ttlEnable=off" };
    QTest::newRow("46 CAN frequency") << int(CustomOutputD3) << hex("0f") << QStringList { "canFre=15" };
    QTest::newRow("48 frame count") << int(CustomOutputD5) << hex("02") << QStringList {};
    QTest::newRow("48 header of frame 1")
        << int(CustomOutputD5) << hex("0201341278563412000005")
        << QStringList { "frame1.stdId=1234", "frame1.extId=12345678", "frame1.ide=标准标识符",
               "frame1.rtr=数据帧", "frame1.dataLength=5" };
    QTest::newRow("50 stream head") << int(CustomOutputD7) << hex("1e1122019cff6400")
                                    << QStringList { "ttlFre=30", "ttlFrameHead=11", "ttlFrameEnd=22",
                                           "ttlBaud=19200", "ttlCheck=和校验", "ttlFormat=小端",
                                           "ttlMin=-100", "ttlMax=100" };
    QTest::newRow("52 stream table") << int(CustomOutputD9) << hex("28") + QByteArray(45, '\x01')
                                     << QStringList {};
    QTest::newRow("54 masks of frame 0")
        << int(CustomOutputDB) << hex("000300") + QByteArray(16, '\x02') << QStringList {};
    QTest::newRow("56 bit channels of frame 0")
        << int(CustomOutputDD) << hex("00") + QByteArray(64, '\x02') << QStringList {};
    QTest::newRow("59 bit values of frame 0")
        << int(CanMapping20) << hex("00") + QByteArray(64, '\x03') << QStringList {};
    QTest::newRow("61 byte channels of frame 0")
        << int(CanMapping22) << hex("000102030405060708") << QStringList {};
    QTest::newRow("63 CAN baud") << int(CanMapping24) << hex("02") << QStringList { "canBaud=125K" };
}

// The user changes everything, then one answer arrives: it shows what it
// carries and leaves every other control as the user set it.
void TestCustomConfig::answersLeaveOtherEditsAlone()
{
    QFETCH(int, code);
    QFETCH(QByteArray, payload);
    QFETCH(QStringList, carried);
    editEverything();
    QMap<QString, QString> expected = shown();
    QCOMPARE(expected.value("canEnable"), QStringLiteral("on"));
    QCOMPARE(expected.value("frame1.extId"), QStringLiteral("18FF50E5"));
    for (const QString &pair : carried) {
        QVERIFY(expected.contains(pair.section('=', 0, 0)));
        QVERIFY(expected.value(pair.section('=', 0, 0)) != pair.section('=', 1));
        expected[pair.section('=', 0, 0)] = pair.section('=', 1);
    }
    m_page->slot_information(CodeID(code), payload);
    const QMap<QString, QString> after = shown();
    for (auto it = expected.cbegin(); it != expected.cend(); ++it)
        QCOMPARE(it.key() + '=' + after.value(it.key()), it.key() + '=' + it.value());
}

// "使能" switched on, then "刷新帧": the frequency's answer does not switch it
// off, and the parameter file saves the switches as the page shows them.
void TestCustomConfig::switchesSurviveARefreshAndGoToTheFile()
{
    m_host.data.TTLEnable = false;
    m_host.data.CANEnable = true;
    m_page->refreshFromRecord();
    auto *serial = child<MCheckBox>(m_page, "ttlEnable");
    auto *can = child<MCheckBox>(m_page, "canEnable");
    clickBox(serial);
    clickBox(can);
    m_page->slot_information(CustomOutputD3, QByteArray(1, char(50)));
    m_page->slot_information(CustomOutputD5, QByteArray(1, '\0'));
    QVERIFY(serial->checked());
    QVERIFY(!can->checked());
    const QString fragment = m_page->fileFragment();
    QVERIFY2(
        fragment.contains("<TTLEnable>1</TTLEnable>\r\n<CANEnable>0</CANEnable>\r\n"), qPrintable(fragment));
}


QTEST_MAIN(TestCustomConfig)
#include "tst_customconfig.moc"
