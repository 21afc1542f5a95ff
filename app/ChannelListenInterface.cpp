#include "ChannelListenInterface.h"

#include "ControlColors.h"
#include "DeviceData.h"
#include "HelpWidget.h"
#include "Messages.h"
#include "ModelDefaults.h"
#include "RecordFile.h"
#include "PageHost.h"
#include "RFRadioConfig.h"
#include "SettingPage.h"
#include "SettingPages.h"

#include <QCloseEvent>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace
{
constexpr int kTopMargin = 10;
constexpr int kGap = 5;
constexpr int kEdgeMargin = 5;
constexpr int kMenuEndMargin = 25;
constexpr int kActionStart = 15;

int textWidth(const QPushButton *button)
{
    return button->fontMetrics().horizontalAdvance(button->text());
}
} // namespace

ChannelListenInterface::ChannelListenInterface(int model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
{
    setObjectName(QStringLiteral("ChannelListenInterface"));
    setAttribute(Qt::WA_StyledBackground, true);

    m_menu[SectionSbus1] = makeButton("sbus1Config", tr("SBUS1设置"));
    m_menu[SectionSbus2] = makeButton("sbus2Config", tr("SBUS2设置"));
    m_menu[SectionChannelHold] = makeButton("holdConfig", tr("通道保持"));
    m_menu[SectionButtons] = makeButton("buttonConfig", tr("按钮设置"));
    m_menu[SectionComprehensive] = makeButton("comprehensiveConfig", tr("综合设置"));
    m_menu[SectionRadioModule] = makeButton("rfradioConfig", tr("图传设置"));
    m_menu[SectionCustomOutput] = makeButton("customConfig", tr("自定义设置"));
    m_menu[kHelpEntry] = makeButton("HelpInformation", QString());
    m_return = makeButton("returnButton", tr("返 回"));
    m_left = makeButton("leftScaleButton", QString());
    m_right = makeButton("rightScaleButton", QString());

    m_actions[size_t(Action::WriteData)] = makeButton("saveData", tr("写入数据"));
    m_actions[size_t(Action::ReadData)] = makeButton("readData", tr("读取数据"));
    m_actions[size_t(Action::SaveFile)] = makeButton("saveConfigFile", tr("保存配置"));
    m_actions[size_t(Action::LoadFile)] = makeButton("loadConfigFile", tr("加载配置"));
    m_actions[size_t(Action::FactoryReset)] = makeButton("factoryReset", tr("恢复出厂设置"));

    connect(
        m_menu[SectionSbus1], &QPushButton::clicked, this, &ChannelListenInterface::on_sbus1Config_clicked);
    connect(
        m_menu[SectionSbus2], &QPushButton::clicked, this, &ChannelListenInterface::on_sbus2Config_clicked);
    connect(m_menu[SectionChannelHold], &QPushButton::clicked, this,
        &ChannelListenInterface::on_holdConfig_clicked);
    connect(m_menu[SectionButtons], &QPushButton::clicked, this,
        &ChannelListenInterface::on_buttonConfig_clicked);
    connect(m_menu[SectionComprehensive], &QPushButton::clicked, this,
        &ChannelListenInterface::on_comprehensiveConfig_clicked);
    connect(m_menu[SectionRadioModule], &QPushButton::clicked, this,
        &ChannelListenInterface::on_rfRadioConfig_clicked);
    connect(m_menu[SectionCustomOutput], &QPushButton::clicked, this,
        &ChannelListenInterface::on_customConfig_clicked);
    connect(
        m_menu[kHelpEntry], &QPushButton::clicked, this, &ChannelListenInterface::on_helpInformation_clicked);
    connect(m_return, &QPushButton::clicked, this, &ChannelListenInterface::on_channelListen_return_clicked);
    connect(m_left, &QPushButton::clicked, this, &ChannelListenInterface::on_leftScaleButton_clicked);
    connect(m_right, &QPushButton::clicked, this, &ChannelListenInterface::on_rightScaleButton_clicked);

    // The menu follows the radio module kind the unit reported: 1 has the
    // module power page, 2 the external output module.
    PageHost *host = PageHost::instance();
    const int module = host ? host->deviceData().m_module : 0;
    m_entries = Sequences::sections(module);
    m_entries.append(kHelpEntry);
    for (int section = 0; section < int(m_menu.size()); ++section)
        m_menu[size_t(section)]->setVisible(m_entries.contains(section));

    if (host) {
        const QString path = modelDefaultsPath(model);
        if (!path.isEmpty() && !loadModelDefaults(path, host->deviceData()))
            Messages::warning(this, modelDefaultsFileName(model), QStringLiteral("open file failed!"));
    }

    // The setting pages, built once the model's names are known. The module
    // power page and the custom output page exist only for the module kind
    // that has them.
    SettingPage *sbus = createSettingPage(SectionSbus1, this);
    setSectionPage(SectionSbus1, sbus);
    setSectionPage(SectionSbus2, sbus);
    for (int section : { SectionChannelHold, SectionButtons, SectionComprehensive })
        setSectionPage(section, createSettingPage(section, this));
    if (module == 1)
        setSectionPage(SectionRadioModule, new RFRadioConfig(this));
    else if (module == 2)
        setSectionPage(SectionCustomOutput, createSettingPage(SectionCustomOutput, this));
    refreshPages();
    if (SettingPage *p = page(m_section))
        p->showSection(m_section);
}

QPushButton *ChannelListenInterface::makeButton(const char *objectName, const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(objectName));
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

SettingPage *ChannelListenInterface::page(int section) const
{
    return section >= 0 && section < SectionCount ? m_pages[size_t(section)] : nullptr;
}

void ChannelListenInterface::setSectionPage(int section, SettingPage *page)
{
    if (section < 0 || section >= SectionCount)
        return;
    SettingPage *replaced = m_pages[size_t(section)];
    m_pages[size_t(section)] = page;
    // A page no section shows any more goes (the SBUS page serves two).
    if (replaced && std::find(m_pages.begin(), m_pages.end(), replaced) == m_pages.end())
        replaced->deleteLater();
    if (page) {
        page->setParent(this);
        page->setVisible(page == m_pages[size_t(m_section)]);
    }
}

QPushButton *ChannelListenInterface::menuButton(int section) const
{
    return section >= 0 && section < int(m_menu.size()) ? m_menu[size_t(section)] : nullptr;
}

QPushButton *ChannelListenInterface::actionButton(Action action) const
{
    return m_actions[size_t(action)];
}

void ChannelListenInterface::setPageAreaEnabled(bool enabled)
{
    for (SettingPage *p : m_pages) {
        if (p)
            p->setEnabled(enabled);
    }
    for (QPushButton *button : m_actions)
        button->setEnabled(enabled);
}

QVector<SettingPage *> ChannelListenInterface::pages() const
{
    QVector<SettingPage *> distinct;
    for (SettingPage *p : m_pages) {
        if (p && !distinct.contains(p))
            distinct.append(p);
    }
    return distinct;
}

void ChannelListenInterface::refreshPages()
{
    for (SettingPage *p : pages())
        p->refreshFromRecord();
}

QString ChannelListenInterface::parameterFileText() const
{
    auto fragment = [this](int section) {
        SettingPage *p = page(section);
        return p ? p->fileFragment() : QString();
    };
    RecordFile::Fragments f;
    f.sbus = fragment(SectionSbus1);
    f.channelHold = fragment(SectionChannelHold);
    f.buttons = fragment(SectionButtons);
    f.comprehensive = fragment(SectionComprehensive);
    // Only the page the unit's module kind has exists; the other stays empty.
    f.modulePower = fragment(SectionRadioModule);
    f.customOutput = fragment(SectionCustomOutput);
    PageHost *host = PageHost::instance();
    return RecordFile::compose(f, host ? host->deviceData().m_module : 0);
}

// ---------------------------------------------------------------- sections

void ChannelListenInterface::chooseSection(int section)
{
    m_section = section;
    SettingPage *current = page(section);
    for (SettingPage *p : pages()) {
        // Sections 0 and 1 share one page; it is told which port it shows.
        if (p == current)
            p->showSection(section);
        p->setVisible(p == current);
    }
    layoutHub();
    update();
}

void ChannelListenInterface::on_sbus1Config_clicked()
{
    chooseSection(SectionSbus1);
}

void ChannelListenInterface::on_sbus2Config_clicked()
{
    chooseSection(SectionSbus2);
}

void ChannelListenInterface::on_holdConfig_clicked()
{
    chooseSection(SectionChannelHold);
}

void ChannelListenInterface::on_buttonConfig_clicked()
{
    chooseSection(SectionButtons);
}

void ChannelListenInterface::on_comprehensiveConfig_clicked()
{
    chooseSection(SectionComprehensive);
}

void ChannelListenInterface::on_rfRadioConfig_clicked()
{
    chooseSection(SectionRadioModule);
}

void ChannelListenInterface::on_customConfig_clicked()
{
    chooseSection(SectionCustomOutput);
}

void ChannelListenInterface::on_helpInformation_clicked()
{
    if (m_help) {
        m_help->setWindowFlags(m_help->windowFlags() | Qt::WindowStaysOnTopHint);
        m_help->showNormal();
        return;
    }
    m_help = new HelpWidget(this);
    connect(m_help, &HelpWidget::signal_helpWidget, this, &ChannelListenInterface::slot_helpWidget);
    m_help->show();
}

void ChannelListenInterface::slot_helpWidget()
{
    // The help window was closed: it is kept for the next use, without its
    // stay-on-top flag.
    if (m_help)
        m_help->setWindowFlags(m_help->windowFlags() & ~Qt::WindowStaysOnTopHint);
}

void ChannelListenInterface::on_channelListen_return_clicked()
{
    if (m_leaveCheck && !m_leaveCheck())
        return;
    hide();
    m_scroll = 0;
    if (PageHost *host = PageHost::instance())
        host->showModelPage();
}

void ChannelListenInterface::on_leftScaleButton_clicked()
{
    if (m_scroll > 0)
        --m_scroll;
    update();
}

void ChannelListenInterface::on_rightScaleButton_clicked()
{
    if (m_scroll < m_entries.size() - 1)
        ++m_scroll;
    update();
}

void ChannelListenInterface::closeEvent(QCloseEvent *event)
{
    Q_EMIT signal_closeEvent();
    deleteLater();
    event->accept();
}

// ---------------------------------------------------------------- layout

void ChannelListenInterface::resizeEvent(QResizeEvent *event)
{
    // Laid out on every paint; also at once, so that a page is given its
    // area before it is first drawn.
    QWidget::resizeEvent(event);
    layoutHub();
}

void ChannelListenInterface::paintEvent(QPaintEvent *)
{
    layoutHub();
    const int u = height() / 20;
    const int bar = 3 * u / 2;
    QPainter painter(this);
    painter.setPen(QPen(ControlColors::lightGrey(), 3));
    painter.drawRect(rect());
    painter.drawRect(0, 0, width(), bar);
    painter.drawRect(0, height() - bar, width(), bar);
}

void ChannelListenInterface::layoutHub()
{
    const int w = width();
    const int h = height();
    const int u = h / 20;
    const int bar = 3 * u / 2;

    // The current section's button is bold and white, the others normal and black.
    for (int section = 0; section < int(m_menu.size()); ++section) {
        QPushButton *button = m_menu[size_t(section)];
        const bool current = section == m_section;
        const int weight = current ? 75 : 50;
        if (button->font().weight() != weight) {
            QFont font = button->font();
            font.setWeight(weight);
            button->setFont(font);
        }
        const QColor colour = current ? QColor(Qt::white) : QColor(Qt::black);
        if (button->palette().color(QPalette::ButtonText) != colour) {
            QPalette palette = button->palette();
            palette.setColor(QPalette::ButtonText, colour);
            button->setPalette(palette);
        }
    }

    const int returnWidth = qMax(w / 8, textWidth(m_return) * 3 / 2);
    const int returnX = w - kEdgeMargin - returnWidth;
    m_return->setGeometry(returnX, kTopMargin, returnWidth, u);
    const int rightX = returnX - 10 - u;
    m_right->setGeometry(rightX, kTopMargin, u, u);
    m_left->setGeometry(kEdgeMargin, kTopMargin, u, u);

    for (int i = 0; i < m_scroll && i < m_entries.size(); ++i)
        m_menu[size_t(m_entries.at(i))]->hide();
    int x = kEdgeMargin + u + kGap;
    bool full = false;
    for (int i = m_scroll; i < m_entries.size(); ++i) {
        QPushButton *button = m_menu[size_t(m_entries.at(i))];
        const int bw = m_entries.at(i) == kHelpEntry ? u : textWidth(button) * 6 / 5;
        full = full || x + bw > rightX - kMenuEndMargin;
        if (full) {
            button->hide();
            continue;
        }
        button->setGeometry(x, kTopMargin, bw, u);
        button->show();
        x += bw + kGap;
    }

    int ax = kActionStart;
    for (QPushButton *button : m_actions) {
        const int bw = textWidth(button) * 6 / 5;
        button->setGeometry(ax, h - bar + 10, bw, u);
        ax += bw + kGap;
    }

    if (SettingPage *p = page(m_section))
        p->setGeometry(0, bar, w, h - 3 * u);
}
