// The window against two virtual units and a port that is not there: after
// the port's own warning the connecting screen says why and offers a port;
// the one chosen is remembered in port.xml and used at once. The status line
// follows what the window then does with that unit.
#include "AnswerRules.h"
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "MainWindow.h"
#include "Messages.h"
#include "PortFile.h"
#include "VunitProcess.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

namespace
{

constexpr int kGenerousMs = 15000;

QString labelText(const QWidget &window, const char *name)
{
    const auto *label = window.findChild<QLabel *>(QLatin1String(name));
    return label ? label->text() : QStringLiteral("<no %1>").arg(QLatin1String(name));
}

// The last operation without its time.
QString operation(const QWidget &window)
{
    return labelText(window, "statusOperation").mid(10);
}

void choosePort(QWidget &window, const QString &path)
{
    auto *list = window.findChild<QComboBox *>(QStringLiteral("portList"));
    auto *connect = window.findChild<QPushButton *>(QStringLiteral("portConnect"));
    QVERIFY(list && connect);
    list->setEditText(path);
    connect->click();
}

QWidget *chooser(QWidget &window)
{
    return window.findChild<QWidget *>(QStringLiteral("portChooser"));
}

} // namespace

class TestPortChooserE2e : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void chosenUnitIsUsedAtOnceAndRemembered();
    void busyAndMissingPortsAreNamed();

private:
    QList<Messages::Shown> m_shown;
    bool m_writeLoadedFile = true;
};

void TestPortChooserE2e::cleanup()
{
    Messages::setResponder({});
    Messages::setFileResponder({});
    AppPaths::setAppDir(QString());
    m_shown.clear();
}

void TestPortChooserE2e::chosenUnitIsUsedAtOnceAndRemembered()
{
    QTemporaryDir dir;
    QVERIFY(QDir().mkpath(dir.filePath("a")) && QDir().mkpath(dir.filePath("b")));
    VunitProcess rowan(dir.filePath("a"));
    VunitProcess cedar(dir.filePath("b"));
    QVERIFY(rowan.start({ "--model", "ROWAN" }));
    // The unit refuses channel hold writes.
    QVERIFY(cedar.start({ "--model", "CEDAR", "--module", "1", "--refuse", "b5" }));
    const QString badPath = QStringLiteral("/nonexistent/ttyQM9");
    QVERIFY(VunitProcess::writeAppDir(dir.filePath("app"), badPath));
    AppPaths::setAppDir(dir.filePath("app"));
    Messages::setResponder([this](const Messages::Shown &shown) {
        m_shown.append(shown);
        return shown.title != QStringLiteral("写入配置文件") || m_writeLoadedFile;
    });

    MainWindow window;
    window.show();
    // The port's own warning comes first and stays as it is.
    QCOMPARE(m_shown.size(), 1);
    QCOMPARE(m_shown.at(0).title, QStringLiteral("Open serial"));
    QCOMPARE(m_shown.at(0).text, QStringLiteral("/nonexistent/ttyQM9 open failed!"));
    QVERIFY(chooser(window) && chooser(window)->isVisible());
    QCOMPARE(labelText(window, "portProblem"),
        QStringLiteral("/nonexistent/ttyQM9：没有这个设备（未连接，或路径有误）。"));
    QCOMPARE(labelText(window, "statusConnection"), QStringLiteral("未连接：没有这个设备"));
    QCOMPARE(labelText(window, "statusPort"), QStringLiteral("端口：/nonexistent/ttyQM9"));

    choosePort(window, cedar.linkPath());
    QTRY_COMPARE_WITH_TIMEOUT(window.modelIdentifier(), QStringLiteral("CEDAR"), kGenerousMs);
    QVERIFY(!chooser(window)->isVisible());
    QCOMPARE(labelText(window, "statusPort"), QStringLiteral("端口：") + cedar.linkPath());
    QCOMPARE(labelText(window, "statusConnection"), QStringLiteral("已连接"));
    QCOMPARE(labelText(window, "statusUnit"), QStringLiteral("Cedar，无线模块"));
    QCOMPARE(rowan.record().size(), 0); // the other unit heard nothing
    QCOMPARE(readPortNames(dir.filePath("app/config/port.xml")), QStringList { cedar.linkPath() });
    QCOMPARE(m_shown.size(), 1);

    // Showing the hub reads SBUS 1: its two answers are counted.
    window.showHub();
    QTRY_COMPARE_WITH_TIMEOUT(operation(window), QStringLiteral("读取SBUS 1 — 2 个应答"), kGenerousMs);

    // A refused write says what the unit refused.
    ChannelListenInterface *hub = window.hub();
    hub->menuButton(SectionChannelHold)->click();
    QTRY_COMPARE_WITH_TIMEOUT(operation(window), QStringLiteral("读取通道保持 — 1 个应答"), kGenerousMs);
    hub->actionButton(ChannelListenInterface::Action::WriteData)->click();
    QTRY_COMPARE_WITH_TIMEOUT(
        operation(window), QStringLiteral("设备拒绝：") + codeInfo(0xB5).failureText, kGenerousMs);

    // Saving, then loading a damaged file and a whole one.
    const QString saved = dir.filePath("unit.cfg");
    Messages::setFileResponder([&](const QString &, const QString &, const QString &) { return saved; });
    hub->actionButton(ChannelListenInterface::Action::SaveFile)->click();
    QCOMPARE(operation(window), QStringLiteral("已保存 unit.cfg"));
    QFile file(saved);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    file.close();
    const QString damaged = dir.filePath("damaged.cfg");
    QFile cut(damaged);
    QVERIFY(cut.open(QIODevice::WriteOnly));
    cut.write(lines.mid(0, 6).join('\n') + "\n<keyGear>1,2;</hidMap>\r\n</body>\r\n");
    cut.close();
    m_writeLoadedFile = false;
    Messages::setFileResponder([&](const QString &, const QString &, const QString &) { return damaged; });
    hub->actionButton(ChannelListenInterface::Action::LoadFile)->click();
    QCOMPARE(operation(window), QStringLiteral("已加载 damaged.cfg，到第 7 行为止（此后文件已损坏）"));

    // The write-all counts the frames the unit received, and its refusal.
    m_writeLoadedFile = true;
    Messages::setFileResponder([&](const QString &, const QString &, const QString &) { return saved; });
    const int before = cedar.record().size();
    hub->actionButton(ChannelListenInterface::Action::LoadFile)->click();
    QVERIFY2(operation(window).startsWith(QStringLiteral("全部写入完成：")), qPrintable(operation(window)));
    QTRY_VERIFY_WITH_TIMEOUT(cedar.find(0x39, QByteArray(), before) >= 0, kGenerousMs);
    const int frames = cedar.record().size() - before;
    QVERIFY(frames > 20);
    QVERIFY(cedar.find(0xB5, QByteArray(), before) >= 0);
    // The backup made before the write goes with its outcome.
    const QString outcome = operation(window);
    QCOMPARE(outcome.section(QStringLiteral(" · "), 0, 0),
        QStringLiteral("全部写入完成：%1 帧，其中 1 帧被设备拒绝").arg(frames));
    QVERIFY2(QRegularExpression(QStringLiteral("^已备份：backup/CEDAR-\\d{8}-\\d{6}\\.cfg$"))
                 .match(outcome.section(QStringLiteral(" · "), 1))
                 .hasMatch(),
        qPrintable(outcome));
}

// A port another program holds is called busy; a path that is not there, no
// such device; once released the same port connects.
void TestPortChooserE2e::busyAndMissingPortsAreNamed()
{
    QTemporaryDir dir;
    VunitProcess willow(dir.path());
    QVERIFY(willow.start({ "--model", "WILLO" }));
    QSerialPort holder(willow.linkPath());
    QVERIFY(holder.open(QIODevice::ReadWrite));
    QVERIFY(VunitProcess::writeAppDir(dir.filePath("app"), willow.linkPath()));
    AppPaths::setAppDir(dir.filePath("app"));
    Messages::setResponder([this](const Messages::Shown &shown) {
        m_shown.append(shown);
        return true;
    });

    MainWindow window;
    window.show();
    QCOMPARE(m_shown.size(), 1);
    QCOMPARE(m_shown.at(0).text, willow.linkPath() + QStringLiteral(" open failed!"));
    QCOMPARE(labelText(window, "portProblem"),
        willow.linkPath() + QStringLiteral("：正被另一个程序使用，请先关闭那个程序。"));
    QCOMPARE(labelText(window, "statusConnection"), QStringLiteral("未连接：被另一个程序占用"));

    choosePort(window, dir.filePath("no-unit-here"));
    QCOMPARE(labelText(window, "portProblem"),
        dir.filePath("no-unit-here") + QStringLiteral("：没有这个设备（未连接，或路径有误）。"));
    QVERIFY(chooser(window)->isVisible());
    // A failed choice is not remembered.
    QCOMPARE(readPortNames(dir.filePath("app/config/port.xml")), QStringList { willow.linkPath() });

    holder.close();
    choosePort(window, willow.linkPath());
    QTRY_COMPARE_WITH_TIMEOUT(window.modelIdentifier(), QStringLiteral("WILLO"), kGenerousMs);
    QCOMPARE(labelText(window, "statusUnit"), QStringLiteral("Willow，无无线模块"));
    QCOMPARE(m_shown.size(), 1);
}

QTEST_MAIN(TestPortChooserE2e)
#include "tst_port_chooser_e2e.moc"
