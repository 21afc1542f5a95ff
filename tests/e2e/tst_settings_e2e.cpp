// The SBUS channel settings and channel hold from screen to unit and back,
// over a real pty: a write, a read, a parameter file saved, the unit reset to
// its factory values, the file loaded and written to the unit again.
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "MSpinBox.h"
#include "MainWindow.h"
#include "Messages.h"
#include "VunitProcess.h"

#include <QFileInfo>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

// The unit's answers of one read, by (code, first payload byte).
using Answers = QMap<QPair<int, int>, QByteArray>;

QPushButton *hubButton(MainWindow &window, const char *name)
{
    auto *b = window.hub()->findChild<QPushButton *>(QLatin1String(name));
    if (!b)
        qFatal("no %s", name);
    return b;
}

} // namespace

class TestSettingsEndToEnd : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void unitGetsBackWhatTheFileHeld();
    void cancelledSaveRewritesTheRememberedPath();

private:
    // Reads SBUS 1, SBUS 2 and channel hold through the hub's menu and
    // returns the unit's answers.
    Answers readAll();

    QTemporaryDir m_dir;
    VunitProcess *m_unit = nullptr;
    MainWindow *m_window = nullptr;
    QSignalSpy *m_answers = nullptr;
    QStringList m_dialogs;
    QStringList m_fileDialogs;
    QString m_fileAnswer;
};

void TestSettingsEndToEnd::initTestCase()
{
    m_unit = new VunitProcess(m_dir.path());
    QVERIFY(m_unit->startWithApp({ "--model", "ALDER", "--module", "0" }));

    Messages::setResponder([this](const Messages::Shown &shown) {
        m_dialogs << shown.title + '/' + shown.text;
        return true; // "是" to every question
    });
    Messages::setFileResponder([this](const QString &caption, const QString &start, const QString &filter) {
        m_fileDialogs << caption + '|' + start + '|' + filter;
        return m_fileAnswer;
    });

    m_window = new MainWindow;
    m_window->show();
    QTRY_VERIFY_WITH_TIMEOUT(m_window->hub(), 10000);
    m_answers = new QSignalSpy(m_window, &MainWindow::signal_information);
    m_window->showHub();
}

void TestSettingsEndToEnd::cleanupTestCase()
{
    delete m_answers;
    delete m_window;
    m_unit->terminate();
    delete m_unit;
    Messages::setResponder({});
    Messages::setFileResponder({});
}

Answers TestSettingsEndToEnd::readAll()
{
    m_answers->clear();
    for (const char *menu : { "sbus1Config", "sbus2Config", "holdConfig" })
        hubButton(*m_window, menu)->click();
    Answers got;
    auto collect = [&]() {
        for (const QList<QVariant> &a : *m_answers) {
            const int code = a.at(0).value<CodeID>();
            const QByteArray data = a.at(1).toByteArray();
            if ((code == 1 || code == 17 || code == 19) && !data.isEmpty())
                got.insert({ code, quint8(data.at(0)) }, data);
        }
        return got.size();
    };
    if (!QTest::qWaitFor([&]() { return collect() == 5; }, 5000))
        qWarning("the unit answered %d of the 5 reads", int(got.size()));
    return got;
}

void TestSettingsEndToEnd::unitGetsBackWhatTheFileHeld()
{
    // An edit written to the unit first, so that the unit no longer holds
    // its factory values when the file is saved.
    hubButton(*m_window, "sbus1Config")->click();
    auto *page = m_window->hub()->findChild<QWidget *>("SbusConfig");
    page->findChild<MSpinBox *>("fineTuning_2")->slot_calculatorMsg(20);
    page->findChild<MSpinBox *>("rightTrip_7")->slot_calculatorMsg(133);
    hubButton(*m_window, "saveData")->click();
    QVERIFY(m_dialogs.contains(QStringLiteral("写入数据/确认要写入数据吗!")));

    const Answers before = readAll();
    QCOMPARE(before.size(), 5);
    QCOMPARE(quint8(before.value({ 1, 0 }).at(2)), quint8(20));
    QCOMPARE(quint8(before.value({ 1, 0 }).at(33 + 6)), quint8(133));

    const QString cfg = m_dir.path() + "/bench.cfg";
    m_fileAnswer = cfg;
    hubButton(*m_window, "saveConfigFile")->click();
    QVERIFY(QFileInfo::exists(cfg));

    hubButton(*m_window, "factoryReset")->click();
    QVERIFY(m_dialogs.contains(QStringLiteral("恢复出厂设置/确认要恢复出厂设置吗！")));
    QVERIFY(readAll() != before);

    hubButton(*m_window, "loadConfigFile")->click();
    QVERIFY(m_dialogs.contains(QStringLiteral("写入配置文件/确认要写入配置文件参数吗！")));
    QCOMPARE(m_fileDialogs.last(), "OpenFile|" + cfg + "|Config File(*.cfg)");
    // The write-all went out in its order: both SBUS ports, then channel hold.
    const int first = m_unit->find(0xA4, QByteArray(), m_unit->find(0xEA));
    QVERIFY(first > 0);
    QCOMPARE(m_unit->find(0xA8, QByteArray(), first), first + 1);
    QCOMPARE(m_unit->find(0xA4, QByteArray(), first + 1), first + 2);
    QCOMPARE(m_unit->find(0xB5, QByteArray(), first), first + 4);

    Answers after = readAll();
    // Port 1's fixed value of channel 15, -20 (0x94), was written to the file
    // as -20, read back as -236 and sent as its low byte 0x14: the unit now
    // holds +20. Port 2's -50 comes back as itself.
    QCOMPARE(quint8(after.value({ 17, 0 }).at(15)), quint8(0x14));
    QCOMPARE(quint8(after.value({ 17, 1 }).at(15)), quint8(0x80 | 50));
    after[{ 17, 0 }][15] = char(0x94);
    QCOMPARE(after, before);
}

void TestSettingsEndToEnd::cancelledSaveRewritesTheRememberedPath()
{
    const QString tmp = AppPaths::file("/config/lastAddr.tmp");
    const QString saved = m_dir.path() + "/bench.cfg";
    {
        QFile f(tmp);
        QVERIFY(f.open(QIODevice::ReadWrite));
        QVERIFY(f.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    }
    const QDateTime old = QFileInfo(tmp).lastModified();
    m_fileAnswer.clear();
    hubButton(*m_window, "saveConfigFile")->click();
    QCOMPARE(m_fileDialogs.last(), "SaveFile|" + saved + "|Config File(*.cfg)");
    QVERIFY(QFileInfo(tmp).lastModified() > old);
    QFile f(tmp);
    QVERIFY(f.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromLocal8Bit(f.readAll()), saved);
}

QTEST_MAIN(TestSettingsEndToEnd)
#include "tst_settings_e2e.moc"
