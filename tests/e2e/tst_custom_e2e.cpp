// The output module's settings through the real window and the virtual unit
// over a pty: three CAN frames edited on the page, written, read back, saved
// to a file, the unit reset to its factory values, the file loaded and
// written to the unit again, which then answers exactly as before.
#include "AppPaths.h"
#include "CanFrame.h"
#include "CanReceive.h"
#include "ChannelListenInterface.h"
#include "CustomConfig.h"
#include "DataWidget.h"
#include "MCheckBox.h"
#include "MainWindow.h"
#include "Messages.h"
#include "VunitProcess.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

using Action = ChannelListenInterface::Action;

struct Heard {
    int code;
    QByteArray data;
};

// The answers of the output module's group among everything the window
// handed to its pages.
QVector<Heard> customAnswers(const QSignalSpy &spy)
{
    static const QSet<int> group { 38, 44, 46, 48, 50, 52, 54, 56, 59, 61, 63 };
    QVector<Heard> out;
    for (const QList<QVariant> &args : spy) {
        const int code = args.at(0).value<CodeID>();
        if (group.contains(code))
            out.append({ code, args.at(1).toByteArray() });
    }
    return out;
}

template <typename T> T *child(QWidget *parent, const char *name)
{
    return parent->findChild<T *>(QLatin1String(name));
}

} // namespace

class TestCustomEndToEnd : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void threeFramesSurviveAFactoryReset();
    void writingRightAfterOpeningKeepsTheUnitsFrames();

private:
    // Read group and frame refresh; the answers of both.
    void readBack(MainWindow &window, ChannelListenInterface *hub, int frames, QVector<Heard> *answers);

    QStringList m_titles;
};

void TestCustomEndToEnd::initTestCase()
{
    registerCodeIdMetaType();
    Messages::setResponder([this](const Messages::Shown &shown) {
        m_titles << shown.title;
        return true;
    });
}

void TestCustomEndToEnd::cleanupTestCase()
{
    Messages::setResponder({});
    Messages::setFileResponder({});
}

void TestCustomEndToEnd::readBack(
    MainWindow &window, ChannelListenInterface *hub, int frames, QVector<Heard> *answers)
{
    QSignalSpy spy(&window, &MainWindow::signal_information);
    hub->actionButton(Action::ReadData)->click();
    // The refresh asks for the frames the read told the page about.
    QTRY_COMPARE_WITH_TIMEOUT(int(window.m_data.CANFrameCnt), frames, 5000);
    child<QPushButton>(hub->page(6), "flushFrame")->click();
    QTRY_COMPARE_WITH_TIMEOUT(customAnswers(spy).size(), 7 + 5 * frames, 5000);
    *answers = customAnswers(spy);
}

void TestCustomEndToEnd::threeFramesSurviveAFactoryReset()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.startWithApp(
        { QStringLiteral("--model"), QStringLiteral("CEDAR"), QStringLiteral("--module"), QStringLiteral("2") }));
    const QString file = dir.path() + QStringLiteral("/three.cfg");
    Messages::setFileResponder([file](const QString &, const QString &, const QString &) { return file; });

    MainWindow window;
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 10000);
    ChannelListenInterface *hub = window.hub();
    auto *page = qobject_cast<CustomConfig *>(hub->page(6));
    QVERIFY(page);
    QCOMPARE(window.m_data.pyxChannelNames.value(4), QStringLiteral("LW")); // Cedar's list

    // Before anything was read there are no frames: the refresh sends nothing.
    child<QPushButton>(page, "flushFrame")->click();
    hub->menuButton(6)->click();
    QTRY_COMPARE_WITH_TIMEOUT(int(window.m_data.CANFrameCnt), 1, 5000);
    QCOMPARE(unit.find(0xDB), -1);
    QCOMPARE(unit.find(0xD5, QByteArray(1, '\0')), -1);
    // The count alone adds no frame to the page; the one the user adds is
    // filled by the refresh with the unit's frame and its factory mapping:
    // eight bytes, all linear.
    QVERIFY(page->frameEditors().isEmpty());
    child<QPushButton>(page, "addFrame")->click();
    child<QPushButton>(page, "flushFrame")->click();
    QTRY_COMPARE_WITH_TIMEOUT(int(window.m_data.canFrames.at(0).dataMask), 0xFF, 5000);

    // Three frames: the unit's, an extended remote one and a third; frame 1
    // maps byte 1 to "NONE" and byte 2 bit by bit.
    child<QPushButton>(page, "addFrame")->click();
    child<QPushButton>(page, "addFrame")->click();
    CanFrame *second = page->frameEditors().at(1);
    child<QLineEdit>(second, "extId")->setText(QStringLiteral("18FF50E5"));
    child<QComboBox>(second, "ide")->setCurrentIndex(1);
    child<QComboBox>(second, "rtr")->setCurrentIndex(1);
    child<QLineEdit>(page->frameEditors().at(2), "stdId")->setText(QStringLiteral("7FF"));
    child<QPushButton>(page->frameEditors().at(0), "dataPrase")->click();
    DataWidget *mapping = page->frameEditors().at(0)->dataWidget();
    QVERIFY(mapping);
    auto *nonlinear = child<MCheckBox>(mapping, "dataNonlinear_2");
    QTest::mouseClick(
        nonlinear, Qt::LeftButton, Qt::NoModifier, QPoint(nonlinear->height() / 2, nonlinear->height() / 2));
    child<QComboBox>(mapping, "bitChannel_5")->setCurrentIndex(3);
    child<QComboBox>(mapping, "dataIndex")->setCurrentIndex(0);
    auto *channel = child<QComboBox>(mapping, "channelMap");
    channel->setCurrentIndex(channel->count() - 1);
    child<QPushButton>(mapping, "canRestore")->click();
    QCOMPARE(int(window.m_data.canFrames.at(0).byteMap[0][1]), 254);
    QCOMPARE(int(window.m_data.canFrames.at(0).nonlinearMask), 0x02);

    hub->actionButton(Action::WriteData)->click();
    QVERIFY(m_titles.contains(QStringLiteral("写入数据")));
    // The write stored the unit's values for extended and remote.
    QCOMPARE(int(window.m_data.canFrames.at(1).ide), 4);
    QCOMPARE(int(window.m_data.canFrames.at(1).rtr), 2);
    QVERIFY(unit.find(0x23, QByteArray::fromHex("02") + QByteArray(8, '\0')) >= 0);

    QVector<Heard> before;
    readBack(window, hub, 3, &before);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(before.at(3).data, QByteArray(1, '\3')); // 0xD5 0x0A: the count alone

    hub->actionButton(Action::SaveFile)->click();
    QFile saved(file);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    const QByteArray text = saved.readAll();
    QVERIFY(text.contains("<CANFrameCnt>3</CANFrameCnt>\r\n"));
    QCOMPARE(text.count("<CANFrame>"), 3);
    QVERIFY(text.endsWith("</TTLStream></body>\r\n"));

    // The reset reads the group again: the unit's one factory frame is left.
    hub->actionButton(Action::FactoryReset)->click();
    QTRY_COMPARE_WITH_TIMEOUT(page->frameEditors().size(), 1, 5000);

    hub->actionButton(Action::LoadFile)->click();
    QVERIFY(m_titles.contains(QStringLiteral("写入配置文件")));
    QCOMPARE(page->frameEditors().size(), 3);

    QVector<Heard> after;
    readBack(window, hub, 3, &after);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(after.size(), before.size());
    for (int i = 0; i < before.size(); ++i) {
        QCOMPARE(after.at(i).code, before.at(i).code);
        QCOMPARE(after.at(i).data.toHex(' '), before.at(i).data.toHex(' '));
    }

    // Meanwhile the unit has handed back frames it sends on the bus.
    QTRY_VERIFY_WITH_TIMEOUT(
        window.canReceiveWindow() && window.canReceiveWindow()->receivedCount() > 0, 5000);
    unit.terminate();
}

// The page opened on a unit with a frame and written at once: the page holds
// no frame of its own, so the write says "no frames" and sends no identifier
// and no mapping over the unit's.
void TestCustomEndToEnd::writingRightAfterOpeningKeepsTheUnitsFrames()
{
    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.startWithApp(
        { QStringLiteral("--model"), QStringLiteral("CEDAR"), QStringLiteral("--module"), QStringLiteral("2") }));

    MainWindow window;
    window.show();
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 10000);
    ChannelListenInterface *hub = window.hub();
    window.showHub();
    hub->menuButton(6)->click();
    QTRY_COMPARE_WITH_TIMEOUT(int(window.m_data.CANFrameCnt), 1, 5000);
    QVERIFY(window.m_data.canFrames.isEmpty());

    hub->actionButton(Action::WriteData)->click();
    QTRY_VERIFY_WITH_TIMEOUT(unit.find(0x25) >= 0, 5000);
    const int written = unit.find(0x16);
    QVERIFY(written >= 0);
    QVERIFY(unit.find(0xD6, QByteArray(1, '\0'), written) >= 0);
    for (const VunitProcess::RecordLine &line : unit.record()) {
        QVERIFY2(line.code != 0xD6 || line.payload.size() == 1, line.payload.toHex(' ').constData());
        for (const int mapping : { 0xDC, 0xDE, 0x21, 0x23 })
            QVERIFY2(line.code != mapping, QByteArray::number(mapping, 16).constData());
    }
    unit.terminate();
}

QTEST_MAIN(TestCustomEndToEnd)
#include "tst_custom_e2e.moc"
