#include "MainWindow.h"

#include "AnswerRules.h"
#include "AppLog.h"
#include "AppPaths.h"
#include "Backups.h"
#include "BusyWait.h"
#include "CanReceive.h"
#include "ChannelListenInterface.h"
#include "EditTracker.h"
#include "LinkLog.h"
#include "MDlg.h"
#include "Messages.h"
#include "ModelDefaults.h"
#include "ModelInterface.h"
#include "ModelPages.h"
#include "ParameterFile.h"
#include "PortChooser.h"
#include "PortFile.h"
#include "RFParaConfig.h"
#include "RecordAnswers.h"
#include "RecordFile.h"
#include "RFRadioConfig.h"
#include "RadioResources.h"
#include "SerialLink.h"
#include "SettingPage.h"
#include "StartupRules.h"
#include "StatusLine.h"
#include "StyleSheetFile.h"
#include "ui_MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIcon>
#include <QPushButton>
#include <QPixmapCache>
#include <QScreen>
#include <QStackedWidget>
#include <QTimer>
#include <QUrl>

namespace
{
MainWindow *g_mainWindow = nullptr;

// The website link of the form carries no address of its own.
const char kWebsite[] = "https://quillmark.example/";
} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(new Ui::MainWindow)
{
    Q_INIT_RESOURCE(icons);
    initRadioResources(); // the add button's icon
    registerCodeIdMetaType();
    ui->setupUi(this);
    g_mainWindow = this;
    m_connectingScreen = ui->centralwidget;
    // The pages take turns in one stack that stays the central widget. Taken
    // out of the window and put back, a page lost and regained the style
    // sheet each time: every control in it was polished anew, and each combo
    // box left new pictures in the style's pixmap cache, for good.
    m_pageStack = new QStackedWidget(this);
    m_pageStack->setObjectName(QStringLiteral("pageStack"));
    m_pageStack->addWidget(takeCentralWidget());
    setCentralWidget(m_pageStack);
    setWindowIcon(QIcon(QStringLiteral(":/app/quillmark.svg")));
    m_status = new StatusLine(statusBar());
    m_portChooser = new PortChooser(ui->centralwidget);
    ui->verticalLayout->insertWidget(1, m_portChooser);
    m_edits = new EditTracker(
        m_data, [this](int section) { writeSection(section); }, this);

    setWindowTitle(QStringLiteral("Brenvo-remote controller 1.5.0"));
    m_configDir = AppPaths::file(QStringLiteral("/config/"));
    applyStyleSheet();
    m_modelIds = ::modelIdentifiers();

    m_link = new SerialLink(this);
    connect(m_link, &SerialLink::readyRead, this, &MainWindow::slot_readyRead);
    connect(m_link, &SerialLink::lost, this, &MainWindow::unitLost);
    m_reconnectTimer = new QTimer(this);
    m_reconnectTimer->setInterval(1000);
    connect(m_reconnectTimer, &QTimer::timeout, this, &MainWindow::tryReconnect);
    m_link->openFromFile(AppPaths::userFile(QStringLiteral("/config/port.xml")), this);
    connect(m_portChooser, &PortChooser::connectRequested, this, &MainWindow::connectToPort);
    showLinkState();

    setMinimumSize(StartupRules::kMinimumWidth, StartupRules::kMinimumHeight);
    placeWindow();

    // The unit needs a moment after the port opens before it answers.
    busyWait(kStartupDelayMs);
    if (m_link->isOpen())
        m_link->run(Sequences::identifyUnit());
}

MainWindow::~MainWindow()
{
    // temp/ holds the website panel's downloads of this run.
    QDir(AppPaths::writableFile(QStringLiteral("/temp"))).removeRecursively();
    delete m_canReceive;
    if (g_mainWindow == this)
        g_mainWindow = nullptr;
    delete ui;
}

MainWindow *MainWindow::instance()
{
    return g_mainWindow;
}

ChannelListenInterface *MainWindow::hub() const
{
    return m_hub;
}

ModelInterface *MainWindow::modelPage(int model) const
{
    return model >= 0 && model < int(m_modelPages.size()) ? m_modelPages[size_t(model)] : nullptr;
}

void MainWindow::applyStyleSheet()
{
    m_previousStyleSheet = styleSheet();
    const auto sheet = StyleSheetFile::read();
    if (!sheet)
        return;
    m_styleSheet = *sheet;
    setStyleSheet(m_styleSheet);
}

void MainWindow::placeWindow()
{
    QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    const StartupRules::Placement placement
        = StartupRules::placeWindow(screen ? screen->availableGeometry() : QRect());
    if (placement.maximise)
        setWindowState(windowState() | Qt::WindowMaximized);
    else
        setGeometry(placement.geometry);
    ui->centralwidget->setMinimumHeight(height() - 40);
}

// ---------------------------------------------------------------- answers

void MainWindow::slot_readyRead()
{
    m_link->receive([this](quint8 code, const QByteArray &payload) { handleFrame(code, payload); });
}

void MainWindow::handleFrame(quint8 code, const QByteArray &payload)
{
    const Answer answer = interpretAnswer(code, payload);
    if (!answer.failureText.isEmpty()) {
        qCDebug(lcLink).noquote() << answer.failureText;
        ++m_refusedAnswers;
        m_status->refused(answer.failureText);
    }
    if (answer.moduleAnswer) {
        if (answer.moduleKind >= 0) {
            m_data.m_module = answer.moduleKind;
            m_unitRecord.m_module = answer.moduleKind;
        }
        qCDebug(lcApp).noquote() << QStringLiteral("m_data.m_module = ") + QString::number(m_data.m_module);
        m_status->setUnit(m_modelId, m_data.m_module);
    }
    if (answer.showCanWindow) {
        if (!m_canReceive)
            m_canReceive = new canReceive();
        m_canReceive->show();
        if (answer.canWindowGetsData)
            m_canReceive->addFrame(answer.data);
    }
    if (answer.emits) {
        if (RecordAnswers::decode(code, answer.data, m_modelIndex, m_unitRecord))
            m_unitAnswers.note(code, answer.data);
        m_edits->noteAnswer(code, answer.data, m_modelIndex);
        // Live reports and the battery answer of a menu's prelude are not
        // answers of the group being read.
        if (answer.codeId != ChannelDataReport && answer.codeId != BatteryData)
            m_status->answerArrived();
        Q_EMIT signal_information(answer.codeId, answer.data);
    }
    if (answer.identify)
        identify(answer.identifier);
}

void MainWindow::identify(const QString &identifier)
{
    m_modelId = identifier;
    qCDebug(lcApp).noquote() << identifier;
    const int model = m_modelIds.indexOf(identifier);
    if (model < 0)
        return;

    // Edits not written yet are settled before a reconnect rebuilds the pages;
    // kept, the old pages stay until the hub is left.
    if (m_reconnected && model == m_modelIndex && m_hub
        && !m_edits->settle(EditTracker::Occasion::Reconnect)) {
        m_heldIdentity = identifier;
        setCentral(m_hub);
        return;
    }
    m_heldIdentity.clear();

    // A repeated identification builds fresh pages; the earlier ones go.
    if (ModelInterface *old = m_modelPages[size_t(model)])
        old->deleteLater();
    if (m_hub) {
        m_hub->deleteLater();
        m_hub = nullptr;
    }
    forgetPagePictures();

    // The same unit back after a reconnect keeps the record as it stood;
    // setting the hub up again would load the model's defaults over it.
    const bool keepRecord = m_reconnected && model == m_modelIndex;
    const DeviceData kept = m_data;
    // A reconnect starts from fresh name lists: the SBUS control names are
    // otherwise appended to on every load of a model file.
    if (m_reconnected) {
        m_data.sbusControlNames.clear();
        ++m_reconnects;
    }
    m_reconnected = false;
    // A backup holds only what this unit said since it was identified.
    m_unitRecord = DeviceData();
    m_unitRecord.m_module = m_data.m_module;
    m_unitAnswers.clear();

    m_modelIndex = model;
    m_status->setUnit(identifier, m_data.m_module);
    m_status->setConnection(StatusText::Connection::Connected);
    ModelInterface *page = createModelPage(model, this);
    m_modelPages[size_t(model)] = page;
    connect(page, &ModelInterface::signal_startupCalibration, this, &MainWindow::slot_startupCalibration);
    connect(page, &ModelInterface::signal_finishCalibration, this, &MainWindow::slot_finishCalibration);
    connect(page, &ModelInterface::signal_closeEvent, this, &MainWindow::slot_closeEvent);
    connect(this, &MainWindow::signal_information, page, &ModelInterface::slot_information);
    setCentral(page);

    m_link->run(Sequences::startModelPageUpload());
    createHub();
    m_edits->forget();
    m_edits->attach(m_hub);
    if (keepRecord && m_hub) {
        const int module = m_data.m_module;
        m_data = kept;
        m_data.m_module = module;
        m_hub->refreshPages();
    }
}

void MainWindow::unitLost()
{
    if (!m_reconnect || m_closing) {
        m_status->setConnection(StatusText::Connection::Lost);
        return; // the port is never reopened: the window just stops hearing the unit
    }
    qCDebug(lcApp) << "the unit went away; reopening the port once a second";
    m_status->setConnection(StatusText::Connection::Reconnecting);
    setCentral(m_connectingScreen);
    retirePages();
    m_reconnectTimer->start();
}

void MainWindow::retirePages()
{
    // Unwritten edits keep their pages: they are asked about once the unit is back.
    if (m_hub && !m_edits->refresh().isEmpty())
        return;
    // Identification builds fresh pages. Freed now, the old pages' memory
    // serves the new ones; freed only after the new ones were built beside
    // them, it stayed with the process, several MB for good.
    for (ModelInterface *&page : m_modelPages) {
        if (page)
            page->deleteLater(); // a sequence it started may still be running
        page = nullptr;
    }
    if (m_hub)
        m_hub->deleteLater();
    m_hub = nullptr;
    forgetPagePictures();
}

void MainWindow::forgetPagePictures()
{
    // The style keeps pictures of combo boxes and frames in Qt's pixmap
    // cache under each control's palette; no control has the old pages'
    // palettes any more, yet their pictures would stay until the cache is
    // full (10 MB), growing the process by some 400 KB a reconnect. The
    // controls on show draw theirs again once.
    QPixmapCache::clear();
}

void MainWindow::tryReconnect()
{
    if (!m_link->reopenFromFile(AppPaths::userFile(QStringLiteral("/config/port.xml"))))
        return;
    m_reconnectTimer->stop();
    qCDebug(lcApp) << "port open again; identifying the unit";
    showLinkState();
    m_reconnected = true;
    // As at start: the unit needs a moment after the port opens.
    busyWait(kStartupDelayMs);
    m_link->run(Sequences::identifyUnit());
}

void MainWindow::connectToPort(const QString &name)
{
    if (!m_link->openNamed(name)) {
        showLinkState();
        return;
    }
    m_reconnectTimer->stop();
    const QString portFile = AppPaths::writableFile(QStringLiteral("/config/port.xml"));
    if (!writePortFile(portFile, name))
        qCWarning(lcApp) << "could not remember the port in" << portFile;
    showLinkState();
    // As at start: the unit needs a moment after the port opens.
    busyWait(kStartupDelayMs);
    m_link->run(Sequences::identifyUnit());
}

void MainWindow::showLinkState()
{
    const bool open = m_link->isOpen();
    m_status->setPort(m_link->portName());
    m_status->setConnection(open ? StatusText::Connection::Connecting : StatusText::Connection::NotOpen,
        PortProblems::shortText(m_link->problem()));
    m_portChooser->setProblem(m_link->problemText());
    m_portChooser->setVisible(!open);
}

QString MainWindow::backupBeforeWrite()
{
    const FileParts::Parts read = m_unitAnswers.complete(m_unitRecord);
    if (read.none()) {
        qCDebug(lcApp) << "backup: nothing read from the unit yet";
        return QString();
    }
    QString error;
    const QString path = Backups::save(
        m_modelId, RecordFile::text(m_unitRecord, read), QDateTime::currentDateTime(), &error);
    if (path.isEmpty()) {
        qCWarning(lcApp).noquote() << "backup failed, writing anyway:" << error;
        m_status->backupFailed(error);
    } else {
        m_status->backupSaved(QStringLiteral("backup/") + QFileInfo(path).fileName());
    }
    return path;
}

void MainWindow::createHub()
{
    m_hub = new ChannelListenInterface(m_modelIndex, this);
    m_hub->hide();

    const std::array<void (MainWindow::*)(), 7> menuSlots {
        &MainWindow::slot_sbus1Config,
        &MainWindow::slot_sbus2Config,
        &MainWindow::slot_channelHold,
        &MainWindow::slot_buttonSetting,
        &MainWindow::slot_comprehensiveSetting,
        &MainWindow::slot_rfRadioConfig,
        &MainWindow::slot_customConfig,
    };
    for (int section = 0; section < SectionCount; ++section)
        connect(m_hub->menuButton(section), &QPushButton::clicked, this, menuSlots[size_t(section)]);

    using Action = ChannelListenInterface::Action;
    connect(m_hub->actionButton(Action::WriteData), &QPushButton::clicked, this, &MainWindow::slot_saveData);
    connect(m_hub->actionButton(Action::ReadData), &QPushButton::clicked, this, &MainWindow::slot_readData);
    connect(
        m_hub->actionButton(Action::SaveFile), &QPushButton::clicked, this, &MainWindow::slot_saveConfigFile);
    connect(
        m_hub->actionButton(Action::LoadFile), &QPushButton::clicked, this, &MainWindow::slot_loadConfigFile);
    connect(m_hub->actionButton(Action::FactoryReset), &QPushButton::clicked, this,
        &MainWindow::slot_restoreFactory);
    connect(m_hub, &ChannelListenInterface::signal_closeEvent, this, &MainWindow::slot_closeEvent);

    // Every setting page hears every answer of the unit, once.
    for (SettingPage *page : m_hub->pages())
        connect(this, &MainWindow::signal_information, page, &SettingPage::slot_information);

    // The comprehensive page's device search goes out from here.
    if (SettingPage *page = m_hub->page(SectionComprehensive)) {
        if (auto *search = page->findChild<QPushButton *>(QStringLiteral("searchDevices")))
            connect(search, &QPushButton::clicked, this, &MainWindow::slot_searchDevices);
    }
    // The module power page's resets go out from here.
    if (auto *radio = qobject_cast<RFRadioConfig *>(m_hub->page(SectionRadioModule))) {
        connect(radio, &RFRadioConfig::signal_resetModule_ground, this, &MainWindow::slot_moduleGroundReset);
        connect(radio, &RFRadioConfig::signal_resetModule_air, this, &MainWindow::slot_moduleAirReset);
    }
    // The custom output page's refresh reads its CAN frames back from the unit.
    if (SettingPage *custom = m_hub->page(SectionCustomOutput)) {
        if (auto *flush = custom->findChild<QPushButton *>(QStringLiteral("flushFrame")))
            connect(flush, &QPushButton::clicked, this, &MainWindow::slot_flushFrameButton_clicked);
    }
}

// ---------------------------------------------------------------- pages

void MainWindow::setCentral(QWidget *page)
{
    if (m_pageStack->indexOf(page) < 0)
        m_pageStack->addWidget(page);
    m_pageStack->setCurrentWidget(page);
}

QWidget *MainWindow::currentPage() const
{
    return m_pageStack->currentWidget();
}

void MainWindow::showHub()
{
    if (!m_hub)
        return;
    setCentral(m_hub);
    m_status->readStarted(SectionSbus1);
    m_link->run(Sequences::showHub());
}

void MainWindow::showModelPage()
{
    // A reconnect that waited for the hub to be left rebuilds the pages now.
    if (!m_heldIdentity.isEmpty()) {
        identify(m_heldIdentity);
        return;
    }
    if (ModelInterface *page = modelPage(m_modelIndex))
        setCentral(page);
}

int MainWindow::currentSection() const
{
    return m_hub ? m_hub->currentSection() : -1;
}

bool MainWindow::confirm(const QString &title, const QString &text)
{
    MDlg *dialog = Messages::newDialog(this, true);
    dialog->setWindowTitle(title);
    dialog->setStyleSheet(m_styleSheet);
    dialog->setText(text);
    connect(dialog, &MDlg::signal_dialog, this, &MainWindow::slot_dialog);
    const ChannelListenInterface *hubBefore = m_hub.data();
    const QPointer<ChannelListenInterface> asking = m_hub;
    Messages::exec(dialog, this);
    const bool confirmed = m_confirmed;
    m_confirmed = false;
    // A reconnect while the question was open rebuilt the hub: the answer was
    // about pages that are gone, so nothing follows from it.
    const bool rebuilt = asking.data() != hubBefore || m_hub.data() != hubBefore;
    if (confirmed && rebuilt) {
        qCDebug(lcApp) << "the pages were rebuilt while the question was open; nothing is done";
        return false;
    }
    return confirmed;
}

void MainWindow::slot_dialog(bool state)
{
    m_confirmed = state;
}

// ---------------------------------------------------------------- sequences

void MainWindow::slot_startupCalibration()
{
    m_link->run(Sequences::startCalibration());
}

void MainWindow::slot_finishCalibration()
{
    m_link->run(Sequences::finishCalibration());
}

void MainWindow::slot_sbus1Config()
{
    m_status->readStarted(SectionSbus1);
    m_link->run(Sequences::menu(SectionSbus1));
}

void MainWindow::slot_sbus2Config()
{
    m_status->readStarted(SectionSbus2);
    m_link->run(Sequences::menu(SectionSbus2));
}

void MainWindow::slot_channelHold()
{
    m_status->readStarted(SectionChannelHold);
    m_link->run(Sequences::menu(SectionChannelHold));
}

void MainWindow::slot_buttonSetting()
{
    m_status->readStarted(SectionButtons);
    m_link->run(Sequences::menu(SectionButtons));
}

void MainWindow::slot_comprehensiveSetting()
{
    m_status->readStarted(SectionComprehensive);
    m_link->run(Sequences::menu(SectionComprehensive));
}

void MainWindow::slot_rfRadioConfig()
{
    m_status->readStarted(SectionRadioModule);
    m_link->run(Sequences::menu(SectionRadioModule));
}

void MainWindow::slot_customConfig()
{
    m_status->readStarted(SectionCustomOutput);
    m_link->run(Sequences::menu(SectionCustomOutput));
}

void MainWindow::slot_readData()
{
    if (!m_hub)
        return;
    m_hub->setPageAreaEnabled(false);
    m_status->readStarted(currentSection());
    m_link->run(Sequences::readGroup(currentSection()));
    if (m_hub) // the sequence's pauses let a reconnect rebuild it
        m_hub->setPageAreaEnabled(true);
}

void MainWindow::slot_saveData()
{
    if (!m_hub)
        return;
    m_hub->setPageAreaEnabled(false);
    if (confirm(tr("写入数据"), tr("确认要写入数据吗!")))
        writeSection(currentSection());
    if (m_hub) // the question and the pauses let a reconnect rebuild it
        m_hub->setPageAreaEnabled(true);
}

void MainWindow::writeSection(int section)
{
    SettingPage *page = m_hub ? m_hub->page(section) : nullptr;
    const QList<QByteArray> payloads = page ? page->collectPayloads() : QList<QByteArray>();
    const std::optional<RequestPlan> plan
        = Sequences::writeSection(section, payloads, m_data.CANFrameCnt, m_data.canFrames.size());
    if (!plan) {
        m_status->notWritten(section);
        return;
    }
    m_status->writeStarted(section);
    backupBeforeWrite();
    MDlg *notice = nullptr;
    if (section == SectionCustomOutput) {
        notice = new MDlg(this, false);
        notice->setStyleSheet(m_styleSheet);
        notice->setText(tr("正在写入中..."));
        notice->show();
    }
    m_link->run(*plan);
    m_edits->noteWrite(*plan, m_modelIndex);
    delete notice;
    m_status->wrote(section);
}

void MainWindow::writeAll()
{
    m_status->writeAllStarted();
    backupBeforeWrite();
    auto *notice = new MDlg(this, false);
    notice->setStyleSheet(m_styleSheet);
    notice->setText(tr("写入中..."));
    notice->show();

    AllPayloads all;
    all.moduleKind = m_data.m_module;
    all.canFrames = m_data.canFrames.size();
    if (m_hub) {
        auto fromPage = [this](int section) {
            SettingPage *page = m_hub->page(section);
            return page ? page->payloadsFromRecord() : QList<QByteArray>();
        };
        // The SBUS page hands over both ports: port 1's two payloads, then port 2's.
        const QList<QByteArray> sbus = fromPage(SectionSbus1);
        if (sbus.size() == 2 * kSbusPayloads) {
            all.sbus[0] = sbus.mid(0, kSbusPayloads);
            all.sbus[1] = sbus.mid(kSbusPayloads);
        }
        all.channelHold = fromPage(SectionChannelHold);
        all.buttons = fromPage(SectionButtons);
        all.comprehensive = fromPage(SectionComprehensive);
        all.radioModule = fromPage(SectionRadioModule);
        all.customOutput = fromPage(SectionCustomOutput);
    }
    const RequestPlan plan = Sequences::writeAll(all);
    int sent = 0;
    m_link->run(plan, [this, &sent](int done, int total) {
        sent = done;
        m_status->writeAllProgress(done, total);
    });
    m_status->writeAllFinished(sent, plan.size(), m_link->isOpen());
    m_edits->noteWrite(plan, m_modelIndex);
    notice->deleteLater();
}

QString MainWindow::parameterFileText() const
{
    return m_hub ? m_hub->parameterFileText() : ParameterFile::join({});
}

void MainWindow::slot_saveConfigFile()
{
    m_lastPath = LastPath::remember(m_lastPath);
    const QString name = Messages::saveFileName(
        this, QStringLiteral("SaveFile"), m_lastPath, QStringLiteral("Config File(*.cfg)"));
    if (!name.isEmpty())
        m_lastPath = name;
    // The remembered path is rewritten also when the dialog was cancelled.
    LastPath::store(m_lastPath);
    if (name.isEmpty())
        return;
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        qCDebug(lcApp) << "parameter file: cannot write" << name;
        m_status->notSaved(QFileInfo(name).fileName());
        return;
    }
    const QByteArray text = parameterFileText().toLocal8Bit();
    if (file.write(text) == text.size() && file.flush())
        m_status->saved(QFileInfo(name).fileName());
    else
        m_status->notSaved(QFileInfo(name).fileName());
}

bool MainWindow::loadConfigFile(const QString &path)
{
    ParameterFile::LoadReport report;
    const bool opened = ParameterFile::load(path, m_data, ParameterFile::FixedValues::Converted, &report);
    if (opened)
        m_status->loaded(QFileInfo(path).fileName(), report.elements, report.stoppedAtLine);
    else
        m_status->notLoaded(QFileInfo(path).fileName());
    if (m_hub)
        m_hub->refreshPages();
    return opened;
}

void MainWindow::slot_loadConfigFile()
{
    m_lastPath = LastPath::remember(m_lastPath);
    const QString name = Messages::openFileName(
        this, QStringLiteral("OpenFile"), m_lastPath, QStringLiteral("Config File(*.cfg)"));
    if (name.isEmpty())
        return;
    loadConfigFile(name);
    // Asked even when the file gave nothing: the user decides what goes out.
    if (confirm(tr("写入配置文件"), tr("确认要写入配置文件参数吗！")))
        writeAll();
}

void MainWindow::slot_restoreFactory()
{
    if (!confirm(tr("恢复出厂设置"), tr("确认要恢复出厂设置吗！")))
        return;
    m_status->factoryResetStarted(currentSection());
    m_link->run(Sequences::factoryReset(currentSection()));
}

void MainWindow::slot_closeEvent()
{
    if (m_closing || !m_edits->settle(EditTracker::Occasion::Close))
        return;
    m_closing = true;
    m_link->run(Sequences::closing());
    QApplication::quit();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    slot_closeEvent();
    // Staying with unwritten edits keeps the window open.
    if (m_closing)
        event->accept();
    else
        event->ignore();
}

void MainWindow::slot_moduleGroundReset()
{
    m_link->run(Sequences::moduleGroundReset());
}

void MainWindow::slot_moduleAirReset()
{
    m_link->run(Sequences::moduleAirReset());
}

void MainWindow::slot_searchDevices()
{
    m_link->run(Sequences::searchDevices());
}

void MainWindow::on_label_website_linkActivated(QString link)
{
    QDesktopServices::openUrl(QUrl(link.isEmpty() ? QString::fromLatin1(kWebsite) : link));
}

void MainWindow::slot_flushFrameButton_clicked()
{
    m_link->run(Sequences::canFrameRefresh(m_data.CANFrameCnt));
}

void MainWindow::on_pushButton_clicked()
{
    // Each press opens another module window; it lives until it is closed.
    auto *window = new RFParaConfig;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}
