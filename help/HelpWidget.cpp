#include "HelpWidget.h"
#include "ui_HelpWidget.h"

#include "AppPaths.h"

#include <QCloseEvent>
#include <QFile>
#include <QLocale>

#include <iterator>

namespace
{

// The topics in tree order: the item's Chinese text, its English
// translation and the base name of the help file.
struct HelpTopic {
    const char *chinese;
    const char *english;
    const char *file;
};

const HelpTopic kTopics[] = {
    { "通道配置", "Channel Configuration", "/channelInterface" },
    { "SBUS设置", "SBUS Setting", "/sbusChannelSetting" },
    { "通道保持", "Channel Hold", "/channelHold" },
    { "按键设置", "Key Setting", "/buttonSetting" },
    { "综合设置", "Comprehensive Setting", "/comprehensiveSetting" },
    { "图传设置", "RF Radio Setting", "/rfradioSetting" },
    { "自定义设置", "Custom Setting", "/customSetting" },
    { "版权信息", "Copyright", "/copyright" },
};

constexpr int kStartTopic = 1; // "SBUS设置"

} // namespace

HelpWidget::HelpWidget(QWidget *parent, const QString &localeName)
    : QMainWindow(parent)
    , ui(new Ui::HelpWidget)
{
    ui->setupUi(this);
    setWindowTitle(tr("帮助说明"));

    const QString locale = localeName.isEmpty() ? QLocale::system().name() : localeName;
    // Only exactly zh_CN reads the Chinese texts; zh_TW and every other
    // locale get the English ones, as with the translation of the program.
    const bool chinese = locale == QLatin1String("zh_CN");
    for (const HelpTopic &topic : kTopics)
        m_helpFiles << AppPaths::file(QString::fromUtf8(topic.file) + (chinese ? ".ini" : "_english.ini"));
    if (!chinese)
        ui->treeWidget->setFont(QFont(QStringLiteral("Cambria"), 12));
    // The topic list is as wide as its longest item ("Comprehensive Setting"
    // in the larger English font), so that no topic is cut.
    QTreeWidget *tree = ui->treeWidget;
    tree->resizeColumnToContents(0);
    const int needed = tree->columnWidth(0) + 2 * tree->frameWidth();
    tree->setMinimumWidth(needed);
    tree->setMaximumWidth(qMax(tree->maximumWidth(), needed));

    connect(ui->treeWidget, &QTreeWidget::currentItemChanged, this, &HelpWidget::slot_currentItemChanged);
    ui->treeWidget->setCurrentItem(ui->treeWidget->topLevelItem(kStartTopic));
}

HelpWidget::~HelpWidget()
{
    delete ui;
}

void HelpWidget::closeEvent(QCloseEvent *event)
{
    Q_EMIT signal_helpWidget();
    QMainWindow::closeEvent(event);
}

void HelpWidget::slot_currentItemChanged(QTreeWidgetItem *current)
{
    if (!current)
        return;
    const QString text = current->text(0);
    for (int i = 0; i < int(std::size(kTopics)); ++i) {
        if (text != QString::fromUtf8(kTopics[i].chinese) && text != QLatin1String(kTopics[i].english))
            continue;
        QFile file(m_helpFiles.at(i));
        // A missing help file leaves the text that is shown.
        if (file.open(QIODevice::ReadOnly))
            ui->label->setText(QString::fromUtf8(file.readAll()));
        return;
    }
}
