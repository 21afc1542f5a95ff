#include "AppPaths.h"
#include "CanReceive.h"
#include "ChannelListenInterface.h"
#include "MainWindow.h"
#include "Messages.h"
#include "ModelInterface.h"
#include "PtyPeer.h"
#include "RFParaConfig.h"
#include "RecordFile.h"
#include "SerialLink.h"
#include "SettingPage.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTextEdit>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

// A setting page that hands over fixed payloads, to drive the write of a section.
class FixedPage : public SettingPage
{
public:
    QList<QByteArray> payloads;
    int collected = 0;
    void refreshFromRecord() override {}
    QList<QByteArray> collectPayloads() override
    {
        ++collected;
        return payloads;
    }
    QList<QByteArray> payloadsFromRecord() override { return payloads; }
    QString fileFragment() override { return QString(); }
    void slot_information(CodeID, QByteArray) override {}
};

void writePortFile(const QString &dir, const QString &content)
{
    QDir().mkpath(dir + QStringLiteral("/config"));
    QFile file(dir + QStringLiteral("/config/port.xml"));
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(content.toUtf8());
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void startupAsksForModuleKindThenIdentity();
    void addButtonOpensAModuleWindowPerPress();
    void identificationShowsTheModelPage();
    void unknownModelIsIgnored();
    void moduleKindOutsideRangeIsKept();
    void calibrationRequests();
    void menuButtonsSendTheirSequences_data();
    void menuButtonsSendTheirSequences();
    void showingTheHubStopsUploadAndReadsSbus1();
    void writeOfCurrentSectionAsksFirst();
    void writeWithWrongPayloadCountSendsNothing();
    void factoryResetReadsTheSectionAgain();
    void damagedFileLoadsUpToTheDamage_data();
    void damagedFileLoadsUpToTheDamage();
    void canDataOpensOneWindow();
    void closingStopsUploadAndReadsBattery();
    void sentFrameIsOnTheWireBeforeItsWait();

private:
    void expectFrames(const QStringList &frames, int timeoutMs = 3000);
    void expectSpacing(int minMs);

    QTemporaryDir m_dir;
    PtyPeer m_peer;
    MainWindow *m_window = nullptr;
    qint64 m_constructedAt = 0;
    QList<Messages::Shown> m_shown;
    bool m_answer = true;
};

void TestMainWindow::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QVERIFY(m_peer.open());
    writePortFile(m_dir.path(), QStringLiteral("<?xml version=\"1.0\"?><config><port>%1</port></config>")
                                    .arg(m_peer.slavePath()));
    AppPaths::setAppDir(m_dir.path());
    Messages::setResponder([this](const Messages::Shown &shown) {
        m_shown.append(shown);
        return m_answer;
    });
    m_constructedAt = m_peer.elapsedMs();
    m_window = new MainWindow;
    m_window->show();
}

void TestMainWindow::cleanupTestCase()
{
    // temp/ beside the program holds the downloads of one run only.
    QVERIFY(QDir().mkpath(m_dir.path() + QStringLiteral("/temp/list")));
    QFile(m_dir.path() + QStringLiteral("/temp/list/url.ini")).open(QIODevice::WriteOnly);
    delete m_window;
    QVERIFY(!QDir(m_dir.path() + QStringLiteral("/temp")).exists());
    Messages::setResponder({});
}

void TestMainWindow::expectFrames(const QStringList &frames, int timeoutMs)
{
    QTRY_VERIFY_WITH_TIMEOUT(m_peer.frames().size() >= frames.size(), timeoutMs);
    QCOMPARE(m_peer.frames(), frames);
}

void TestMainWindow::expectSpacing(int minMs)
{
    const QVector<PtyPeer::Received> &r = m_peer.received();
    for (int i = 1; i < r.size(); ++i) {
        const qint64 gap = r[i].atMs - r[i - 1].atMs;
        if (gap < minMs)
            QFAIL(qPrintable(QStringLiteral("frames %1 and %2 only %3 ms apart").arg(i - 1).arg(i).arg(gap)));
    }
}

// The unit needs a second after the port opens; then module kind, then identity.
void TestMainWindow::startupAsksForModuleKindThenIdentity()
{
    QVERIFY(m_shown.isEmpty());
    expectFrames({ "df:", "ff:" });
    QVERIFY(m_peer.received()[0].atMs - m_constructedAt >= 1000);
    expectSpacing(90);
    QVERIFY(!m_window->modelPage(0));
    QCOMPARE(m_window->currentPage()->findChild<QLabel *>("label_state")->text(),
             QStringLiteral("Remote control unit is connecting..."));
    QCOMPARE(m_window->windowTitle(), QStringLiteral("Brenvo-remote controller 1.5.0"));
}

void TestMainWindow::addButtonOpensAModuleWindowPerPress()
{
    const auto moduleWindows = [] {
        QList<RFParaConfig *> found;
        for (QWidget *w : QApplication::topLevelWidgets()) {
            if (auto *page = qobject_cast<RFParaConfig *>(w); page && page->isVisible())
                found.append(page);
        }
        return found;
    };
    auto *add = m_window->findChild<QPushButton *>("pushButton");
    QVERIFY(add->isVisible());
    QTest::mouseClick(add, Qt::LeftButton);
    QTest::mouseClick(add, Qt::LeftButton);
    const QList<RFParaConfig *> opened = moduleWindows();
    QCOMPARE(opened.size(), 2);
    QCOMPARE(opened.first()->windowTitle(), QStringLiteral("RF Radio Setting V1.1.0"));
    for (RFParaConfig *page : opened)
        page->close();
    QTRY_VERIFY(moduleWindows().isEmpty());
}

void TestMainWindow::identificationShowsTheModelPage()
{
    m_peer.clear();
    m_peer.answer(0xDF, hex("02"));
    m_peer.answer(0xFF, QByteArray("ROWAN"));
    expectFrames({ "e5:0232" });
    QTRY_VERIFY(m_window->hub());
    QCOMPARE(m_window->modelIndex(), 5);
    QCOMPARE(m_window->currentPage()->metaObject()->className(), "RowanInterface");
    QCOMPARE(m_window->m_data.m_module, 2);
    // Module kind 2: the menu offers the custom output section, not the radio module.
    QCOMPARE(m_window->hub()->menuEntries(), (QVector<int> { 0, 1, 2, 3, 4, 6, 7 }));
    QVERIFY(m_window->hub()->isHidden());
}

void TestMainWindow::unknownModelIsIgnored()
{
    m_peer.clear();
    m_peer.answer(0xFF, QByteArray("OAKXX"));
    QTRY_COMPARE(m_window->modelIdentifier(), QStringLiteral("OAKXX"));
    QCOMPARE(m_window->modelIndex(), 5);
    QTest::qWait(150);
    QVERIFY(m_peer.frames().isEmpty());
}

void TestMainWindow::moduleKindOutsideRangeIsKept()
{
    m_peer.answer(0xDF, hex("03"));
    m_peer.answer(0xA5, QByteArray(1, '\0')); // a marker that the answers were handled
    QTest::qWait(100);
    QCOMPARE(m_window->m_data.m_module, 2);
}

void TestMainWindow::calibrationRequests()
{
    m_peer.clear();
    ModelInterface *page = m_window->modelPage(5);
    QVERIFY(page);
    Q_EMIT page->signal_startupCalibration();
    Q_EMIT page->signal_finishCalibration();
    expectFrames({ "e6:", "e7:" });
}

void TestMainWindow::menuButtonsSendTheirSequences_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<QStringList>("frames");
    QTest::addColumn<int>("readGroup"); // the last frames: the section's read group
    QTest::newRow("sbus 2") << 1 << QStringList { "e4:", "ad:00", "a3:01", "a7:01" } << 2;
    QTest::newRow("channel hold") << 2 << QStringList { "e5:0132", "ad:00", "b4:00" } << 1;
    QTest::newRow("buttons") << 3 << QStringList { "e4:", "ad:00", "c0:", "c2:", "ca:" } << 3;
    QTest::newRow("custom output")
        << 6 << QStringList { "e4:", "ad:00", "15:", "d1:", "d3:", "d5:0a", "d7:", "d9:", "24:" } << 7;
}

void TestMainWindow::menuButtonsSendTheirSequences()
{
    QFETCH(int, section);
    QFETCH(QStringList, frames);
    QFETCH(int, readGroup);
    m_peer.clear();
    m_window->hub()->menuButton(section)->click();
    expectFrames(frames);
    expectSpacing(90);
    QCOMPARE(m_window->hub()->currentSection(), section);

    // Reading the section again sends just its read group.
    m_peer.clear();
    m_window->hub()->actionButton(ChannelListenInterface::Action::ReadData)->click();
    expectFrames(frames.mid(frames.size() - readGroup));
    QVERIFY(m_window->hub()->actionButton(ChannelListenInterface::Action::ReadData)->isEnabled());
}

void TestMainWindow::showingTheHubStopsUploadAndReadsSbus1()
{
    m_peer.clear();
    m_window->modelPage(5)->findChild<QPushButton *>("channelListen")->click();
    expectFrames({ "e4:", "a3:00", "a7:00" });
    // Two waits of 100 ms after the stop; the peer reads on the window's own
    // thread, so a first paint of the hub can make it note the stop late.
    // One wait missing (100 ms) still fails.
    QVERIFY(m_peer.received()[1].atMs - m_peer.received()[0].atMs >= 150);
    QCOMPARE(m_window->currentPage(), static_cast<QWidget *>(m_window->hub()));

    // The return button brings the model page back.
    m_window->hub()->findChild<QPushButton *>("returnButton")->click();
    QCOMPARE(m_window->currentPage(), static_cast<QWidget *>(m_window->modelPage(5)));
    QCOMPARE(m_window->hub()->scrollPosition(), 0);

    // Styled as delivered, switching pages leaves the controls as they were
    // polished: a control polished anew gets a new palette, and the style
    // keeps new pictures of it for every switch.
    QFile sheet(QStringLiteral(QM_SOURCE_DIR "/config/StyleSheets.qss"));
    QVERIFY(sheet.open(QIODevice::ReadOnly));
    m_window->setStyleSheet(QString::fromUtf8(sheet.readAll()));
    const auto roundTrip = [this] {
        m_window->modelPage(5)->findChild<QPushButton *>("channelListen")->click();
        QCOMPARE(m_window->currentPage(), static_cast<QWidget *>(m_window->hub()));
        m_window->hub()->findChild<QPushButton *>("returnButton")->click();
    };
    roundTrip(); // the first showing polishes the hub's controls
    auto *combo = m_window->hub()->findChild<QComboBox *>();
    QVERIFY(combo);
    const qint64 palette = combo->palette().cacheKey();
    roundTrip();
    QCOMPARE(combo->palette().cacheKey(), palette);
    m_window->setStyleSheet(QString());
}

void TestMainWindow::writeOfCurrentSectionAsksFirst()
{
    auto *page = new FixedPage;
    page->payloads = { hex("0102"), hex("03") };
    ChannelListenInterface *hub = m_window->hub();
    hub->setSectionPage(0, page);
    hub->setSectionPage(1, page);
    m_peer.clear();
    hub->menuButton(1)->click();
    QTRY_COMPARE(m_peer.frames().size(), 4);

    m_peer.clear();
    m_shown.clear();
    m_answer = false;
    hub->actionButton(ChannelListenInterface::Action::WriteData)->click();
    QCOMPARE(m_shown.size(), 1);
    QCOMPARE(m_shown[0].kind, Messages::Kind::Dialog);
    QCOMPARE(m_shown[0].title, QStringLiteral("写入数据"));
    QCOMPARE(m_shown[0].text, QStringLiteral("确认要写入数据吗!"));
    QTest::qWait(150);
    QVERIFY(m_peer.frames().isEmpty());
    QCOMPARE(page->collected, 0);

    m_answer = true;
    hub->actionButton(ChannelListenInterface::Action::WriteData)->click();
    expectFrames({ "a4:0102", "a8:03" });
    expectSpacing(90);
    QVERIFY(hub->actionButton(ChannelListenInterface::Action::WriteData)->isEnabled());
}

void TestMainWindow::writeWithWrongPayloadCountSendsNothing()
{
    auto *page = new FixedPage;
    page->payloads = { hex("01") }; // the buttons section needs three
    ChannelListenInterface *hub = m_window->hub();
    hub->setSectionPage(3, page);
    m_peer.clear();
    hub->menuButton(3)->click();
    QTRY_COMPARE(m_peer.frames().size(), 5);
    m_peer.clear();
    m_answer = true;
    hub->actionButton(ChannelListenInterface::Action::WriteData)->click();
    QCOMPARE(page->collected, 1);
    QTest::qWait(150);
    QVERIFY(m_peer.frames().isEmpty());
}

void TestMainWindow::factoryResetReadsTheSectionAgain()
{
    ChannelListenInterface *hub = m_window->hub();
    m_peer.clear();
    hub->menuButton(2)->click();
    QTRY_COMPARE(m_peer.frames().size(), 3);
    m_peer.clear();
    m_shown.clear();
    m_answer = false;
    hub->actionButton(ChannelListenInterface::Action::FactoryReset)->click();
    QCOMPARE(m_shown.size(), 1);
    QCOMPARE(m_shown[0].title, QStringLiteral("恢复出厂设置"));
    QCOMPARE(m_shown[0].text, QStringLiteral("确认要恢复出厂设置吗！"));
    QTest::qWait(150);
    QVERIFY(m_peer.frames().isEmpty());

    m_answer = true;
    hub->actionButton(ChannelListenInterface::Action::FactoryReset)->click();
    expectFrames({ "ea:", "b4:00" });
    QVERIFY(m_peer.received()[1].atMs - m_peer.received()[0].atMs >= 490);
}

void TestMainWindow::damagedFileLoadsUpToTheDamage_data()
{
    QTest::addColumn<QByteArray>("rest"); // what follows two good lines
    QTest::addColumn<bool>("goodLinesTaken");
    QTest::addColumn<int>("line");
    // The reader decodes the document in blocks of several kilobytes: a byte
    // that is not UTF-8 fails its whole block, so a file of the window's size
    // gives nothing, and the reading stops on its first line.
    QTest::newRow("not UTF-8") << QByteArray("<note>caf\xe9 \xb0\xb4\xc5\xa5</note>\r\n"
                                             "<externalInput>3</externalInput>\r\n</body>\r\n")
                               << false << 1;
    QTest::newRow("cut off in a line") << QByteArray("<externalInput>3</extern") << true << 5;
    QTest::newRow("garbage after two groups")
        << QByteArray("#%&<<garbage>>\r\n<externalInput>3</externalInput>\r\n</body>\r\n") << true << 5;
}

// Loaded through the hub's button with its dialogs answered: what came before
// the damage is taken, nothing else in the record changes, the status line
// names the line, and the write is still offered (declined here).
void TestMainWindow::damagedFileLoadsUpToTheDamage()
{
    QFETCH(QByteArray, rest);
    QFETCH(bool, goodLinesTaken);
    QFETCH(int, line);
    const QString path = m_dir.filePath(QStringLiteral("damaged.cfg"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<body>\r\n"
               "<hidOutput>1</hidOutput>\r\n<baud>57600</baud>\r\n"
        + rest);
    file.close();

    DeviceData &d = m_window->m_data;
    d.hidOutput = 0;
    d.baud = 9600;
    d.externalInput = 2;
    DeviceData expected = d;
    if (goodLinesTaken) {
        expected.hidOutput = 1;
        expected.baud = 57600;
    }
    Messages::setFileResponder([&path](const QString &, const QString &, const QString &) { return path; });
    m_peer.clear();
    m_shown.clear();
    m_answer = false;
    m_window->hub()->actionButton(ChannelListenInterface::Action::LoadFile)->click();
    Messages::setFileResponder({});

    QCOMPARE(d.hidOutput, expected.hidOutput);
    QCOMPARE(d.baud, expected.baud);
    QCOMPARE(d.externalInput, 2);
    QCOMPARE(RecordFile::text(d), RecordFile::text(expected));
    QVERIFY(m_window->findChild<QLabel *>("statusOperation")
                ->text()
                .endsWith(QStringLiteral("已加载 damaged.cfg，到第 %1 行为止（此后文件已损坏）").arg(line)));
    QCOMPARE(m_shown.size(), 1);
    QCOMPARE(m_shown[0].title, QStringLiteral("写入配置文件"));
    QTest::qWait(150);
    QVERIFY(m_peer.frames().isEmpty());
}

void TestMainWindow::canDataOpensOneWindow()
{
    QVERIFY(!m_window->canReceiveWindow());
    m_peer.answer(0x26, hex("ee"));
    QTRY_VERIFY(m_window->canReceiveWindow());
    canReceive *window = m_window->canReceiveWindow();
    QVERIFY(window->isVisible());
    QCOMPARE(window->receivedCount(), 0);
    m_peer.answer(0x26, hex("3412 78563412 01 00 02 aabb"));
    QTRY_COMPARE(window->receivedCount(), 1);
    QCOMPARE(m_window->canReceiveWindow(), window);
    QCOMPARE(window->findChild<QTextEdit *>("textEdit")->toPlainText(),
             QStringLiteral("Extend\t1234\t12345678\tDATA\t2\tAA BB\n"));
}

void TestMainWindow::closingStopsUploadAndReadsBattery()
{
    m_peer.clear();
    m_window->close();
    expectFrames({ "e4:", "ad:00" });
    expectSpacing(90);
}

// Under load a frame left in the port's buffer went out late, up to the end of
// its own wait, and the next frame followed it after a few milliseconds: each
// frame must have left the program when send() returns.
void TestMainWindow::sentFrameIsOnTheWireBeforeItsWait()
{
    PtyPeer unit;
    QVERIFY(unit.open());
    QTemporaryDir dir;
    writePortFile(dir.path(), QStringLiteral("<config><port>%1</port></config>").arg(unit.slavePath()));
    SerialLink link;
    QVERIFY(link.reopenFromFile(dir.path() + QStringLiteral("/config/port.xml")));
    link.send(hex("fab7070000010300140a0a5f"));
    link.send(hex("faec020007225f"));
    unit.readNow(); // no event processed since the sends
    QCOMPARE(unit.frames(), QStringList({ "b7:0001030014" "0a0a", "ec:0722" }));
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
