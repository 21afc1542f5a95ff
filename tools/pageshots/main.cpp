// quillmark-pageshots OUTDIR [--scale F]: renders every model page with live
// values from the virtual unit, at the main window's size and at its smallest
// size, the configuration hub for each radio module kind, the link monitor
// with its history plot, and the main window on its connecting screen, to PNG
// files (offscreen). With --scale the program's scale factor is F
// (QT_SCALE_FACTOR, as on a high-DPI screen) and the files are named
// *_xF.png. With --link-monitor only the link monitor is rendered; with
// --module-window only the radio module window, against the simulated module.
#include "AnswerRules.h"
#include "AppPaths.h"
#include "CanFrame.h"
#include "CanReceive.h"
#include "ChannelListenInterface.h"
#include "CustomConfig.h"
#include "DataWidget.h"
#include "DeviceData.h"
#include "DriftingLink.h"
#include "LogRows.h"
#include "LogWidget.h"
#include "MainWindow.h"
#include "Messages.h"
#include "ModelInterface.h"
#include "ModelSpec.h"
#include "ModuleSimProcess.h"
#include "RFParaConfig.h"
#include "RecordHost.h"
#include "SectionColumn.h"
#include "Sequences.h"
#include "SettingPage.h"
#include "StartupRules.h"
#include "UnitModel.h"
#include "WindowFit.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateTime>
#include <QElapsedTimer>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMouseEvent>
#include <QNetworkReply>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextStream>
#include <QTranslator>

#include <functional>

namespace
{

QString g_suffix; // "_x2" with --scale 2

bool save(QWidget *widget, const QSize &size, const QString &name)
{
    QString path = name;
    path.insert(path.size() - int(qstrlen(".png")), g_suffix);
    widget->resize(size);
    const bool ok = widget->grab().save(path);
    QTextStream(stdout) << (ok ? "wrote " : "FAILED ") << path << '\n';
    return ok;
}

// Hands an answer frame of the unit to the hub's pages as the main window does.
void deliver(ChannelListenInterface &hub, const QByteArray &frame)
{
    const Answer answer = interpretAnswer(quint8(frame.at(1)), frame.mid(4, frame.size() - 5));
    if (!answer.emits)
        return;
    for (SettingPage *page : hub.pages())
        page->slot_information(answer.codeId, answer.data);
}

void drag(QWidget *widget, int fromY, int toY)
{
    const QPoint from(widget->width() / 2, fromY);
    const QPoint to(widget->width() / 2, toY);
    QMouseEvent press(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &press);
    QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &move);
    QMouseEvent release(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(widget, &release);
}

// The button and comprehensive pages filled from the unit's answers to
// their menu sequences: every section closed, every section open, and open
// after dragging to the bottom, at the main window's size and a small one.
bool shootSectionPages(const QString &out)
{
    bool ok = true;
    ChannelListenInterface hub(0);
    hub.show();
    Vunit::UnitConfig config;
    Vunit::UnitModel unit(config);
    for (int section : { SectionButtons, SectionComprehensive }) {
        for (const Request &request : Sequences::menu(section)) {
            QStringList notes;
            const QByteArray &f = request.frame;
            for (const QByteArray &frame : unit.handle(quint8(f.at(1)), f.mid(4, f.size() - 5), 700, &notes))
                deliver(hub, frame);
        }
    }
    deliver(hub, unit.reportFrame(2100));

    const char *const names[] = { "buttons", "comprehensive" };
    for (int section : { SectionButtons, SectionComprehensive }) {
        hub.menuButton(section)->click();
        auto *column = hub.page(section)->findChild<SectionColumn *>();
        const QString base = QStringLiteral("%1/settings_%2").arg(out, QLatin1String(names[section - SectionButtons]));
        for (const QSize size : { QSize(1280, 800), QSize(1024, 600), QSize(760, 480) }) {
            const QString tag = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
            for (int s = 0; s < column->sectionCount(); ++s)
                column->setExpanded(s, false);
            ok &= save(&hub, size, base + QStringLiteral("_closed_") + tag + QStringLiteral(".png"));
            for (int s = 0; s < column->sectionCount(); ++s)
                column->dropDownButton(s)->click();
            ok &= save(&hub, size, base + QStringLiteral("_open_") + tag + QStringLiteral(".png"));
            for (int i = 0; i < 40; ++i)
                drag(column, column->height() - 5, 5);
            ok &= save(&hub, size, base + QStringLiteral("_bottom_") + tag + QStringLiteral(".png"));
            drag(column, 5, column->height() * 40);
        }
    }
    return ok;
}

// One record of a Kite module's access report (^DRPR) with these figures.
QByteArray kiteAccessRecord(const LinkReport::LinkRecord &r)
{
    return QStringLiteral(
        "^DRPR: %1,1,0,\"3\",2,\"4\",\"5\",\"6\",1,\"9\",%2,33,%3,%4,%5,%6,\"%7\",\"%8\",%9\r\n\r\n")
        .arg(r.node)
        .arg(r.distance)
        .arg(r.main.rssi)
        .arg(r.second.rssi)
        .arg(r.main.rsrp)
        .arg(r.second.rsrp)
        .arg(r.main.snr)
        .arg(r.second.snr)
        .arg(r.power)
        .toLatin1();
}

void waitFor(const std::function<bool()> &done, int ms)
{
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
}

// The link monitor polling a drifting link (three nodes, drop-outs, a few
// unanswered polls) served on 127.0.0.1, its history holding the half hour
// before, in Chinese and in English, at 1280 x 800 and 1024 x 600, the plot
// showing 5 and 30 minutes.
bool shootLinkMonitor(const QString &out)
{
    constexpr int kNodes = 3;
    constexpr int kPast = 30 * 60 * 1000 / LinkHistory::kPollMs;
    int poll = kPast;
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost))
        return false;
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
        QTcpSocket *socket = server.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [&, socket] {
            if (!socket->readAll().contains("FormAtcmd_Param_Atcmd="))
                return;
            QByteArray reply = QByteArray("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n\r\n")
                                   .leftJustified(LinkReport::kReplyHeadBytes, ' ');
            for (const LinkReport::LinkRecord &r : DriftingLink::report(kNodes, poll++))
                reply += kiteAccessRecord(r);
            socket->write(reply + "OK\r\n");
        });
    });
    const QString address = QStringLiteral("127.0.0.1:%1").arg(server.serverPort());

    bool ok = true;
    for (const char *language : { "zh", "en" }) {
        QTranslator translator;
        const bool chinese = qstrcmp(language, "zh") == 0;
        translator.load(AppPaths::file(chinese ? QStringLiteral("/translations/chinese.qm")
                                               : QStringLiteral("/translations/english.qm")));
        QApplication::installTranslator(&translator);
        auto *monitor = new logWidget;
        monitor->findChild<QLineEdit *>(QStringLiteral("lineEdit_ip"))->setText(address);
        monitor->findChild<QRadioButton *>(QStringLiteral("mode_access"))->setChecked(true);
        monitor->show();
        poll = kPast;
        DriftingLink::feed(monitor->history(), kNodes, kPast, QDateTime::currentMSecsSinceEpoch());
        monitor->findChild<QPushButton *>(QStringLiteral("link"))->click();
        waitFor([&] { return monitor->findChild<LOG_ITEM *>() != nullptr; }, 10000);
        auto *range = monitor->findChild<QComboBox *>(QStringLiteral("plotRange"));
        for (const QSize size : { QSize(1280, 800), QSize(1024, 600) }) {
            for (int r : { 1, 2 }) {
                range->setCurrentIndex(r);
                monitor->resize(size);
                QElapsedTimer settle;
                settle.start();
                waitFor([&] { return settle.elapsed() > 300; }, 1000);
                // Rows are rebuilt on every tick: shoot while they are up.
                waitFor([&] { return monitor->findChild<LOG_ITEM *>() != nullptr; }, 3000);
                ok &= save(monitor, size,
                    QStringLiteral("%1/linkmonitor_%2_%3x%4_%5min.png")
                        .arg(out, QLatin1String(language))
                        .arg(size.width())
                        .arg(size.height())
                        .arg(r == 1 ? 5 : 30));
            }
        }
        monitor->close(); // deleted on close
        QApplication::removeTranslator(&translator);
        QFile::remove(
            AppPaths::writableFile(LinkReport::logFileName(LinkReport::ReportKind::Access, address)));
    }
    return ok;
}

// The radio module window against the simulated module on 127.0.0.1, in
// both languages at the main window's size and as it opens on a 1024 x 600
// screen: connected, every row read by "Refresh all" and two console commands
// in the history; and the Falcon rows at 1024 x 600. On a small screen also
// scrolled to the bottom, where the console and its history are.
bool shootModuleWindow(const QString &out)
{
    const QRect netbook = WindowFit::place(QSize(1280, 800), QRect(0, 0, 1024, 600));
    const struct {
        const char *name;
        bool english;
        bool falcon;
        QSize size;
    } shots[] = { { "zh_1280x800", false, false, QSize(1280, 800) },
        { "zh_1024x600", false, false, netbook.size() }, { "en_1280x800", true, false, QSize(1280, 800) },
        { "en_1024x600", true, false, netbook.size() }, { "zh_falcon_1024x600", false, true, netbook.size() },
        { "en_falcon_1024x600", true, true, netbook.size() } };
    // Where the address field starts, before the simulator's is typed in.
    qputenv("QUILLMARK_MODULE_ADDRESS", "127.0.0.1:9");
    bool ok = true;
    for (const auto &shot : shots) {
        // The window's own texts are Chinese; English comes from its translation.
        QTranslator translator;
        if (shot.english && translator.load(AppPaths::file(QStringLiteral("/translations/english.qm"))))
            QApplication::installTranslator(&translator);
        ModuleSimProcess sim;
        if (!sim.start(shot.falcon ? QStringList { QStringLiteral("--kind"), QStringLiteral("falcon") }
                                   : QStringList())) {
            QTextStream(stderr) << "quillmark-modulesim did not start\n";
            return false;
        }
        RFParaConfig window;
        const auto child = [&](const char *name) { return window.findChild<QWidget *>(QLatin1String(name)); };
        const auto button = [&](const char *name) { return static_cast<QPushButton *>(child(name)); };
        const auto idle = [&] { return window.findChildren<QNetworkReply *>().isEmpty(); };
        window.resize(shot.size);
        window.show();
        auto *ip = static_cast<QLineEdit *>(child("lineEdit_ip"));
        ip->setText(sim.address());
        button("link")->click();
        waitFor([&] { return button("link")->property("urgent").toBool(); }, 10000);
        if (shot.falcon)
            static_cast<QCheckBox *>(child("falcon_series"))->click();
        button("refresh_all")->click();
        waitFor([&] { return child("refresh_all_progress")->isHidden(); }, 30000);
        for (const char *command : { "AT^DRPS?", "AT+CFUN?" }) {
            static_cast<QLineEdit *>(child("atCmd"))->setText(QLatin1String(command));
            button("atCmd_config")->click();
            waitFor(idle, 10000);
        }
        QMetaObject::invokeMethod(&window, "on_timeout");
        waitFor([&] { return !static_cast<QLabel *>(child("temperature"))->text().isEmpty(); }, 10000);
        waitFor(idle, 10000);
        const QString base = out + QStringLiteral("/rfparaconfig_") + QLatin1String(shot.name);
        ok &= save(&window, shot.size, base + QStringLiteral(".png"));
        QScrollBar *rows = static_cast<QScrollArea *>(child("scrollArea"))->verticalScrollBar();
        if (rows->maximum() > 0) {
            rows->setValue(rows->maximum());
            ok &= save(&window, shot.size, base + QStringLiteral("_scrolled.png"));
        }
        button("link")->click();
        QApplication::removeTranslator(&translator);
    }
    return ok;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (argc == 4 && qstrcmp(argv[2], "--scale") == 0) {
        qputenv("QT_SCALE_FACTOR", argv[3]);
        g_suffix = QStringLiteral("_x") + QString::fromLocal8Bit(argv[3]);
    }
    QApplication app(argc, argv);
    if (argc < 2) {
        QTextStream(stderr) << "usage: quillmark-pageshots OUTDIR [--scale F | --link-monitor | --module-window]\n";
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[1]);
    const bool linkMonitorOnly = argc == 3 && qstrcmp(argv[2], "--link-monitor") == 0;
    const bool moduleWindowOnly = argc == 3 && qstrcmp(argv[2], "--module-window") == 0;
    // The pictures and model files are those staged beside the program.
    if (qEnvironmentVariableIsEmpty("QUILLMARK_APP_DIR"))
        AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
    QDir().mkpath(out);
    // The module window finds its style sheet beside the program itself.
    if (moduleWindowOnly)
        return shootModuleWindow(out) ? 0 : 1;

    // The program's translation for this locale (English outside zh_CN).
    QTranslator translator;
    if (translator.load(AppPaths::file(StartupRules::translationFile(QLocale::system().name()))))
        QApplication::installTranslator(&translator);

    QFile sheet(AppPaths::file(QStringLiteral("/config/StyleSheets.qss")));
    if (sheet.open(QIODevice::ReadOnly))
        app.setStyleSheet(QString::fromUtf8(sheet.readAll()));

    if (linkMonitorOnly)
        return shootLinkMonitor(out) ? 0 : 1;

    const QSize full(StartupRules::kWindowWidth, StartupRules::kWindowHeight);
    const QSize smallest(StartupRules::kMinimumWidth, StartupRules::kMinimumHeight);
    RecordHost host;
    bool ok = true;
    for (int model = 0; model < kModelCount; ++model) {
        Vunit::UnitConfig config;
        config.model = Vunit::Model(model);
        Vunit::UnitModel unit(config);
        QStringList notes;
        unit.handle(0xE5, QByteArray::fromHex("0232"), 0, &notes);

        ModelInterface *page = createModelPage(model, nullptr);
        const QString name = modelSpec(model).identifier.toLower();
        for (qint64 t : { 1700, 5300 }) {
            page->slot_information(ChannelDataReport, unit.reportPayload(t).mid(1));
            ok &= save(page, full, QStringLiteral("%1/%2_%3ms.png").arg(out, name).arg(t));
        }
        page->slot_information(CalibrationStarted, QByteArray());
        ok &= save(page, full, QStringLiteral("%1/%2_calibrating.png").arg(out, name));
        ok &= save(page, smallest, QStringLiteral("%1/%2_smallest.png").arg(out, name));
        delete page;
    }

    // The setting pages filled from the virtual unit's answers, at the main
    // window's size and at a small one.
    {
        host.data.m_module = 2;
        ChannelListenInterface hub(0);
        Vunit::UnitConfig config;
        Vunit::UnitModel unit(config);
        const struct {
            quint8 code;
            QByteArray payload;
        } reads[] = { { 0xA3, QByteArray(1, '\0') }, { 0xA7, QByteArray(1, '\0') },
            { 0xA3, QByteArray(1, '\1') }, { 0xA7, QByteArray(1, '\1') }, { 0xB4, QByteArray(1, '\0') } };
        for (const auto &read : reads) {
            QStringList notes;
            for (const QByteArray &frame : unit.handle(read.code, read.payload, 0, &notes))
                deliver(hub, frame);
        }
        // The custom output group with the unit's frame, then a second frame
        // added on the page, an extended remote one, and a mapping with a
        // nonlinear byte.
        const struct {
            quint8 code;
            QByteArray payload;
        } customReads[] = { { 0x15, {} }, { 0xD1, {} }, { 0xD3, {} }, { 0xD5, QByteArray(1, '\x0A') },
            { 0xD7, {} }, { 0xD9, {} }, { 0x24, {} } },
          frameReads[] = { { 0xD5, QByteArray(1, '\0') }, { 0xDB, QByteArray(1, '\0') },
              { 0xDD, QByteArray(1, '\0') }, { 0x20, QByteArray(1, '\0') }, { 0x22, QByteArray(1, '\0') } };
        auto *custom = static_cast<CustomConfig *>(hub.page(6));
        for (const auto &read : customReads) {
            QStringList notes;
            for (const QByteArray &frame : unit.handle(read.code, read.payload, 0, &notes))
                deliver(hub, frame);
        }
        // The count alone adds no frame: the user adds one and the refresh
        // fills it with the unit's.
        custom->findChild<QPushButton *>(QStringLiteral("addFrame"))->click();
        for (const auto &read : frameReads) {
            QStringList notes;
            for (const QByteArray &frame : unit.handle(read.code, read.payload, 0, &notes))
                deliver(hub, frame);
        }
        custom->findChild<QPushButton *>(QStringLiteral("addFrame"))->click();
        CanFrameRecord &second = host.data.canFrames[1];
        second.extendedId = 0x18FF50E5;
        second.ide = 1;
        second.rtr = 1;
        second.dlc = 2;
        second.dataMask = 0x03;
        second.nonlinearMask = 0x02;
        custom->refreshFromRecord();
        hub.menuButton(6)->click();
        for (const QSize size : { QSize(1280, 800), QSize(700, 450) })
            ok &= save(&hub, size,
                QStringLiteral("%1/settings_custom_%2x%3.png").arg(out).arg(size.width()).arg(size.height()));
        // The serial stream section at the small size, the CAN section folded.
        custom->findChild<QPushButton *>(QStringLiteral("dropDownButton_1"))->click();
        ok &= save(&hub, QSize(700, 450), QStringLiteral("%1/settings_custom_folded_700x450.png").arg(out));
        custom->findChild<QPushButton *>(QStringLiteral("dropDownButton_1"))->click();
        CanFrame *editor = custom->frameEditors().at(1);
        editor->on_buttonClicked_dataPrase();
        DataWidget *mapping = editor->dataWidget();
        mapping->slot_checkedChange(QStringLiteral("dataNonlinear_2"));
        for (const QSize size : { mapping->sizeHint(), QSize(520, 360) })
            ok &= save(mapping, size,
                QStringLiteral("%1/custom_mapping_%2x%3.png").arg(out).arg(size.width()).arg(size.height()));
        mapping->close();

        // The frames the unit hands back, one of each shape.
        canReceive receive;
        for (const char *frame : { "a501 00000000 00 00 08 0102030405060708", "fe07 e550ff18 04 02 00",
                 "2301 78563412 01 00 03 aabbcc" })
            receive.addFrame(QByteArray::fromHex(frame));
        ok &= save(&receive, receive.size(), QStringLiteral("%1/custom_can_receive.png").arg(out));

        const char *const sections[] = { "sbus1", "sbus2", "hold" };
        for (int section = 0; section < 3; ++section) {
            hub.menuButton(section)->click();
            for (const QSize size : { QSize(1280, 760), QSize(700, 450) })
                ok &= save(&hub, size,
                    QStringLiteral("%1/settings_%2_%3x%4.png")
                        .arg(out, QLatin1String(sections[section]))
                        .arg(size.width())
                        .arg(size.height()));
        }
    }

    ok &= shootSectionPages(out);
    ok &= shootLinkMonitor(out);

    for (int module = 0; module < 3; ++module) {
        host.data.m_module = module;
        ChannelListenInterface hub(0);
        ok &= save(&hub, full, QStringLiteral("%1/hub_module%2.png").arg(out).arg(module));
        hub.on_comprehensiveConfig_clicked();
        ok &= save(&hub, smallest, QStringLiteral("%1/hub_module%2_smallest.png").arg(out).arg(module));
        if (module == 1) {
            // The module power page as the unit's factory answers fill it.
            hub.on_rfRadioConfig_clicked();
            Vunit::UnitModel unit(Vunit::UnitConfig {});
            QStringList notes;
            for (const Request &request : Sequences::readGroup(SectionRadioModule)) {
                const QByteArray &f = request.frame;
                for (const QByteArray &frame :
                    unit.handle(quint8(f.at(1)), f.mid(4, f.size() - 5), 0, &notes))
                    deliver(hub, frame);
            }
            ok &= save(&hub, full, QStringLiteral("%1/settings_module_power.png").arg(out));
        }
    }

    // The main window as it starts when its port does not open: the warning
    // is answered, the connecting screen offers the ports, the status line
    // says why.
    {
        Messages::setResponder([](const Messages::Shown &) { return false; });
        MainWindow window;
        ok &= save(&window, full, QStringLiteral("%1/window_connecting.png").arg(out));
        Messages::setResponder({});
    }
    return ok ? 0 : 1;
}
