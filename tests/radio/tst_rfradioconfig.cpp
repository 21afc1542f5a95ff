// The module power page as a user drives it: every control set by hand goes
// out byte for byte and into the parameter file, and an answer about one
// pair leaves the user's edit of the other pair alone.
#include "DeviceData.h"
#include "MCheckBox.h"
#include "MSpinBox.h"
#include "Messages.h"
#include "PageHost.h"
#include "PhaseSwitch.h"
#include "RFRadioConfig.h"

#include <QComboBox>
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

template <typename T> T *child(QWidget *parent, const char *name)
{
    return parent->findChild<T *>(QLatin1String(name));
}

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

} // namespace

class TestRFRadioConfig : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void everyControlGoesOutByteForByte();
    void answersLeaveTheOtherPairAlone_data();
    void answersLeaveTheOtherPairAlone();

private:
    // Power on, "ROM" off, the module powered from switch 2 ("SC") at 7.
    void editEverything();
    QStringList shown() const;

    TestHost m_host;
    RFRadioConfig *m_page = nullptr;
};

void TestRFRadioConfig::init()
{
    Messages::setResponder([](const Messages::Shown &) { return true; });
    m_host.data = DeviceData();
    m_host.data.modulePhysicalNames = QStringList { "NONE", "SA", "SB", "SC", "SD", "SE" };
    m_host.data.modulePowerState[0] = 0;
    m_host.data.modulePowerState[1] = 1;
    m_host.data.modulePhysicalCtl[0] = 255;
    m_host.data.modulePhysicalCtl[1] = 3;
    m_page = new RFRadioConfig;
    m_page->refreshFromRecord();
    m_page->resize(900, 500);
    m_page->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_page));
}

void TestRFRadioConfig::cleanup()
{
    delete m_page;
    Messages::setResponder({});
}

void TestRFRadioConfig::editEverything()
{
    auto *power = child<PhaseSwitch>(m_page, "modulePower");
    QTest::mouseClick(power, Qt::LeftButton, Qt::NoModifier, QPoint(power->width() / 4, power->height() / 2));
    auto *rom = child<MCheckBox>(m_page, "moduleRom");
    QTest::mouseClick(rom, Qt::LeftButton, Qt::NoModifier, QPoint(rom->height() / 2, rom->height() / 2));
    child<QComboBox>(m_page, "modulePhysicalSwitch")->setCurrentIndex(3);
    // The keypad's answer.
    QVERIFY(QMetaObject::invokeMethod(
        child<MSpinBox>(m_page, "modulePhysicalValue"), "slot_calculatorMsg", Q_ARG(double, 7)));
}

QStringList TestRFRadioConfig::shown() const
{
    return { QStringLiteral("power=%1").arg(child<PhaseSwitch>(m_page, "modulePower")->index()),
        QStringLiteral("rom=%1").arg(child<MCheckBox>(m_page, "moduleRom")->checked()),
        QStringLiteral("switch=%1").arg(child<QComboBox>(m_page, "modulePhysicalSwitch")->currentText()),
        QStringLiteral("value=%1").arg(child<MSpinBox>(m_page, "modulePhysicalValue")->currentValue()) };
}

void TestRFRadioConfig::everyControlGoesOutByteForByte()
{
    editEverything();
    QCOMPARE(shown(), (QStringList { "power=1", "rom=0", "switch=SC", "value=7" }));
    const QList<QByteArray> payloads = m_page->collectPayloads();
    QCOMPARE(payloads.size(), 2);
    QCOMPARE(payloads.at(0).toHex(' '), hex("0100").toHex(' ')); // 0x37: on, "ROM" off
    QCOMPARE(payloads.at(1).toHex(' '), hex("0207").toHex(' ')); // 0x39: switch 2, 7
    QCOMPARE(m_page->payloadsFromRecord(), payloads);
    QCOMPARE(m_page->fileFragment(),
        QStringLiteral("<modulePowerState>1,0</modulePowerState>\r\n"
                       "<modulePhysicalCtl>2,7</modulePhysicalCtl>\r\n"));
}

void TestRFRadioConfig::answersLeaveTheOtherPairAlone_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("74 power pair") << int(Group36) << hex("0005")
                                   << QStringList { "power=0", "rom=1", "switch=SC", "value=7" };
    QTest::newRow("76 physical pair")
        << int(Group38) << hex("0409") << QStringList { "power=1", "rom=0", "switch=SE", "value=9" };
    QTest::newRow("74 of three bytes")
        << int(Group36) << hex("000500") << QStringList { "power=1", "rom=0", "switch=SC", "value=7" };
    QTest::newRow("ground reset result") << int(ModuleGroundResetResult) << hex("01")
                                         << QStringList { "power=1", "rom=0", "switch=SC", "value=7" };
}

void TestRFRadioConfig::answersLeaveTheOtherPairAlone()
{
    QFETCH(int, code);
    QFETCH(QByteArray, payload);
    QFETCH(QStringList, expected);
    editEverything();
    m_page->slot_information(CodeID(code), payload);
    QCOMPARE(shown(), expected);
}

QTEST_MAIN(TestRFRadioConfig)
#include "tst_rfradioconfig.moc"
