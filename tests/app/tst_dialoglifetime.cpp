// Every question of the hub and its pages while the unit identifies itself
// again (a reconnect, or a unit that answers 0xFF once more): the hub and its
// pages are rebuilt while the dialog is open. Nothing may crash, no dialog
// may outlive its question, and an answer given after the rebuild writes or
// resets nothing, since the pages it was about are gone.
#include "AppPaths.h"
#include "CanFrame.h"
#include "ChannelListenInterface.h"
#include "DataWidget.h"
#include "MCheckBox.h"
#include "MDlg.h"
#include "MainWindow.h"
#include "Messages.h"
#include "PtyPeer.h"
#include "SettingPage.h"

#include <QApplication>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QDir>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

enum class Trigger { ModeWarning, BaudQuestion, GroundReset, MappingSave, WriteData, LoadFile, FactoryReset };

// Requests that write to the unit or reset it.
const QSet<int> kWriteCodes { 0xA4, 0xA8, 0xB5, 0xC1, 0xC3, 0xCB, 0xC7, 0x18, 0xB7, 0xE8, 0xEC, 0x14, 0x1A,
    0xC5, 0x31, 0x33, 0x35, 0x16, 0xD2, 0xD4, 0xD6, 0xD8, 0xDA, 0xDC, 0xDE, 0x21, 0x23, 0x25, 0x37, 0x39,
    0xEA, 0x11, 0x12 };

template <typename T> T *child(QObject *parent, const char *name)
{
    return parent ? parent->findChild<T *>(QLatin1String(name)) : nullptr;
}

} // namespace

Q_DECLARE_METATYPE(Trigger)

class TestDialogLifetime : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void rebuildWhileADialogIsOpen_data();
    void rebuildWhileADialogIsOpen();

private:
    // The unit answers its module kind and identifies itself; true once a
    // new hub stands and the one before is gone.
    bool identify(int module);
    void openSection(int section);

    QTemporaryDir m_dir;
    PtyPeer m_peer;
    MainWindow *m_window = nullptr;
    QString m_rebuildOn; // the title of the dialog during which the unit identifies again
    int m_module = 2;
    bool m_rebuilt = false;
    bool m_ownedByWindow = false;
};

void TestDialogLifetime::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QVERIFY(m_peer.open());
    const QString config = m_dir.path() + QStringLiteral("/config");
    QVERIFY(QDir().mkpath(config));
    for (const QFileInfo &file :
        QDir(QStringLiteral(QM_APP_DIR "/config")).entryInfoList({ "*.xml", "*.qss" }))
        QFile::copy(file.filePath(), config + '/' + file.fileName());
    QFile port(config + QStringLiteral("/port.xml"));
    QVERIFY(port.open(QIODevice::WriteOnly | QIODevice::Truncate));
    port.write(QStringLiteral("<?xml version=\"1.0\"?><config><port>%1</port></config>")
                   .arg(m_peer.slavePath())
                   .toUtf8());
    port.close();
    AppPaths::setAppDir(m_dir.path());
    Messages::setResponder([this](const Messages::Shown &shown) {
        if (m_rebuildOn.isEmpty() || shown.title != m_rebuildOn || m_rebuilt)
            return true;
        // The open dialog belongs to the main window, never to a page.
        m_ownedByWindow = false;
        for (QWidget *w : QApplication::allWidgets()) {
            if (qobject_cast<MDlg *>(w) && w->windowTitle() == shown.title)
                m_ownedByWindow = w->parentWidget() == m_window;
        }
        m_rebuilt = identify(m_module);
        return true;
    });
    Messages::setFileResponder(
        [this](const QString &, const QString &, const QString &) { return m_dir.filePath("none.cfg"); });
    m_window = new MainWindow;
    m_window->show();
    QVERIFY(identify(2));
}

void TestDialogLifetime::cleanupTestCase()
{
    delete m_window;
    Messages::setResponder({});
    Messages::setFileResponder({});
}

bool TestDialogLifetime::identify(int module)
{
    const QPointer<ChannelListenInterface> before = m_window->hub();
    m_peer.answer(0xDF, QByteArray(1, char(module)));
    m_peer.answer(0xFF, QByteArray("CEDAR"));
    // The old hub goes by deferred deletion, which the waits carry out.
    const QDeadlineTimer deadline(15000);
    while (!deadline.hasExpired()) {
        ChannelListenInterface *now = m_window->hub();
        if (!before && now && now != before.data())
            return m_window->m_data.m_module == module;
        QTest::qWait(20);
    }
    return false;
}

void TestDialogLifetime::openSection(int section)
{
    m_window->showHub();
    m_window->hub()->menuButton(section)->click();
    QCOMPARE(m_window->hub()->currentSection(), section);
}

void TestDialogLifetime::rebuildWhileADialogIsOpen_data()
{
    QTest::addColumn<int>("module");
    QTest::addColumn<int>("section");
    QTest::addColumn<Trigger>("trigger");
    QTest::addColumn<QString>("title");
    QTest::newRow("custom output: interface warning")
        << 2 << int(SectionCustomOutput) << Trigger::ModeWarning << "Warning";
    QTest::newRow("custom output: saving a frame's mapping")
        << 2 << int(SectionCustomOutput) << Trigger::MappingSave << "保存数据解析";
    QTest::newRow("comprehensive: data port baud rate")
        << 2 << int(SectionComprehensive) << Trigger::BaudQuestion << "波特率设置";
    QTest::newRow("module power: ground module reset")
        << 1 << int(SectionRadioModule) << Trigger::GroundReset << "重置图传模块";
    QTest::newRow("hub: write data") << 2 << int(SectionCustomOutput) << Trigger::WriteData << "写入数据";
    QTest::newRow("hub: write a loaded file")
        << 2 << int(SectionSbus1) << Trigger::LoadFile << "写入配置文件";
    QTest::newRow("hub: factory reset")
        << 1 << int(SectionChannelHold) << Trigger::FactoryReset << "恢复出厂设置";
}

void TestDialogLifetime::rebuildWhileADialogIsOpen()
{
    QFETCH(int, module);
    QFETCH(int, section);
    QFETCH(Trigger, trigger);
    QFETCH(QString, title);
    if (m_window->m_data.m_module != module)
        QVERIFY(identify(module));
    openSection(section);
    ChannelListenInterface *hub = m_window->hub();
    const QPointer<SettingPage> page = hub->page(section);
    QVERIFY(page);
    QTest::qWait(900); // the section's read requests are out
    m_peer.clear();
    m_module = module;
    m_rebuilt = false;
    m_rebuildOn = title;

    using Action = ChannelListenInterface::Action;
    switch (trigger) {
    case Trigger::ModeWarning: {
        auto *toggle = child<MCheckBox>(page, "canOutputMode_2");
        QVERIFY(toggle && toggle->isVisible());
        // The press alone: the toggle is gone before a release could reach it.
        QTest::mousePress(
            toggle, Qt::LeftButton, Qt::NoModifier, QPoint(toggle->height() / 2, toggle->height() / 2));
        break;
    }
    case Trigger::MappingSave: {
        child<QPushButton>(page, "addFrame")->click();
        CanFrame *frame = page->findChild<CanFrame *>();
        QVERIFY(frame);
        child<QPushButton>(frame, "dataPrase")->click();
        QVERIFY(frame->dataWidget());
        child<QPushButton>(frame->dataWidget(), "canRestore")->click();
        break;
    }
    case Trigger::BaudQuestion: {
        auto *baud = child<QComboBox>(page, "baud");
        QVERIFY(baud && baud->count() > 1);
        Q_EMIT baud->activated((baud->currentIndex() + 1) % baud->count());
        break;
    }
    case Trigger::GroundReset:
        child<QPushButton>(page, "groundReset")->click();
        break;
    case Trigger::WriteData:
        hub->actionButton(Action::WriteData)->click();
        break;
    case Trigger::LoadFile:
        hub->actionButton(Action::LoadFile)->click();
        break;
    case Trigger::FactoryReset:
        hub->actionButton(Action::FactoryReset)->click();
        break;
    }
    QTRY_VERIFY_WITH_TIMEOUT(m_rebuilt, 15000);
    m_rebuildOn.clear();
    QTest::qWait(300); // whatever the answer would send is out

    QVERIFY(m_ownedByWindow);
    QVERIFY(!page);
    QVERIFY(m_window->hub() && m_window->hub() != hub);
    // The question is over and its dialog gone with it.
    QCOMPARE(m_window->findChildren<MDlg *>().size(), 0);
    for (const PtyPeer::Received &r : m_peer.received())
        QVERIFY2(!kWriteCodes.contains(r.code), qPrintable(QString::number(r.code, 16)));
}

QTEST_MAIN(TestDialogLifetime)
#include "tst_dialoglifetime.moc"
