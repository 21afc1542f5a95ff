#include "ButtonConfig.h"

#include "ControlPictures.h"
#include "DeviceData.h"
#include "MSpinBox.h"
#include "PageHost.h"
#include "SectionColumn.h"
#include "SectionWidgets.h"
#include "SteeringWheel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace
{
const char kNone[] = "NONE";
constexpr int kPairs = 6;
constexpr int kPairColumns = 3;
constexpr int kKindColumns = 3;
constexpr int kPictureSize = 56;

enum Section { Combinations, SuperKeys, KeyKinds };
} // namespace

ButtonConfig::ButtonConfig(QWidget *parent)
    : SettingPage(parent)
{
    setObjectName(QStringLiteral("ButtonConfig"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    m_column = new SectionColumn(this);
    layout->addWidget(m_column);
    m_column->addSection(QStringLiteral("ckeySetting"), tr("  组合键设置"), buildCombinations());
    m_column->addSection(QStringLiteral("sckeySetting"), tr("  超级组合键设置"), buildSuperKeys());
    m_column->addSection(QStringLiteral("keyProperty"), tr("  按键属性设置"), buildKeyKinds());

    connect(m_column->dropDownButton(Combinations), &QPushButton::clicked, this,
        &ButtonConfig::on_dropDownButton_0_clicked);
    connect(m_column->dropDownButton(SuperKeys), &QPushButton::clicked, this,
        &ButtonConfig::on_dropDownButton_1_clicked);
    connect(m_column->dropDownButton(KeyKinds), &QPushButton::clicked, this,
        &ButtonConfig::on_dropDownButton_2_clicked);
}

QWidget *ButtonConfig::buildCombinations()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("ckeyPanel"));
    auto *grid = new QGridLayout(body);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(8);
    for (int i = 0; i < kKeyCombinations; ++i) {
        const QString n = QString::number(i + 1);
        grid->addWidget(SectionWidgets::caption(tr("CKey%1:").arg(i + 1), body), i, 0);
        for (int k = 0; k < 2; ++k) {
            m_comboKeys[size_t(i)][size_t(k)]
                = SectionWidgets::selector(body, QStringLiteral("ckey%1_key%2").arg(i + 1).arg(k + 1));
            grid->addWidget(m_comboKeys[size_t(i)][size_t(k)], i, 1 + 2 * k);
        }
        grid->addWidget(SectionWidgets::caption(QStringLiteral("+"), body), i, 2, Qt::AlignCenter);
        grid->addWidget(SectionWidgets::caption(tr("单步增量"), body), i, 4);
        m_comboSteps[size_t(i)]
            = SectionWidgets::spinBox(body, QStringLiteral("ckey%1_step").arg(n), 0.0, 100.0);
        grid->addWidget(m_comboSteps[size_t(i)], i, 5);
    }
    grid->setColumnStretch(6, 1);
    return body;
}

QWidget *ButtonConfig::buildSuperKeys()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("sckeyPanel"));
    auto *grid = new QGridLayout(body);
    grid->setContentsMargins(16, 12, 16, 12);
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(8);
    const int rowsPerKey = kPairs / kPairColumns;
    for (int key = 0; key < kSuperKeys; ++key) {
        const int top = key * (rowsPerKey + 1);
        QLabel *title = SectionWidgets::caption(QStringLiteral("SCKey%1").arg(key + 1), body);
        QFont bold = title->font();
        bold.setBold(true);
        title->setFont(bold);
        grid->addWidget(title, top, 0, rowsPerKey, 1, Qt::AlignTop);
        for (int j = 0; j < kPairs; ++j) {
            const int row = top + j / kPairColumns;
            const int column = 1 + 2 * (j % kPairColumns);
            QComboBox *selector
                = SectionWidgets::selector(body, QStringLiteral("sckey%1_key%2").arg(key + 1).arg(j + 1));
            MSpinBox *value = SectionWidgets::spinBox(
                body, QStringLiteral("sckey%1_value%2").arg(key + 1).arg(j + 1), -150.0, 150.0);
            m_superKeys[size_t(key)][size_t(j)] = selector;
            m_superValues[size_t(key)][size_t(j)] = value;
            grid->addWidget(selector, row, column);
            grid->addWidget(value, row, column + 1);
        }
        if (key + 1 < kSuperKeys)
            grid->setRowMinimumHeight(top + rowsPerKey, 10);
    }
    grid->setColumnStretch(1 + 2 * kPairColumns, 1);
    return body;
}

QWidget *ButtonConfig::buildKeyKinds()
{
    QWidget *body = SectionWidgets::panel(QStringLiteral("keyPanel"));
    auto *outer = new QVBoxLayout(body);
    outer->setContentsMargins(16, 12, 16, 12);
    outer->setSpacing(12);

    // What the three kinds do, and how the pad's direction keys are named.
    auto *legend = new QHBoxLayout;
    legend->setSpacing(18);
    const struct {
        const char *picture;
        QString text;
    } kinds[] = { { "/image/Single_gray.png", tr("单态") }, { "/image/Double_gray.png", tr("双态") },
        { "/image/Three_gray.png", tr("三态") } };
    for (const auto &kind : kinds) {
        auto *item = new QVBoxLayout;
        auto *picture = new QLabel(body);
        const QPixmap pixmap = ControlPictures::picture(QLatin1String(kind.picture));
        if (!pixmap.isNull())
            picture->setPixmap(
                pixmap.scaled(kPictureSize, kPictureSize, Qt::KeepAspectRatio, Qt::SmoothTransformation));
        picture->setAlignment(Qt::AlignCenter);
        item->addWidget(picture);
        item->addWidget(SectionWidgets::caption(kind.text, body), 0, Qt::AlignHCenter);
        legend->addLayout(item);
    }
    legend->addSpacing(24);
    auto *pad = new QGridLayout;
    pad->setSpacing(2);
    auto *wheel = new SteeringWheel(body, 1);
    wheel->setObjectName(QStringLiteral("directionPad"));
    wheel->setFixedSize(kPictureSize + 24, kPictureSize + 24);
    pad->addWidget(wheel, 0, 1);
    pad->addWidget(SectionWidgets::caption(QStringLiteral("LEFT"), body), 0, 0, Qt::AlignRight);
    pad->addWidget(SectionWidgets::caption(QStringLiteral("RIGHT"), body), 0, 2, Qt::AlignLeft);
    pad->addWidget(SectionWidgets::caption(QStringLiteral("DOWN"), body), 1, 1, Qt::AlignHCenter);
    legend->addLayout(pad);
    legend->addStretch(1);
    outer->addLayout(legend);

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setVerticalSpacing(6);
    for (int k = 0; k < kKeyGears; ++k) {
        const int row = k / kKindColumns;
        const int column = 2 * (k % kKindColumns);
        QComboBox *selector = SectionWidgets::selector(body, QStringLiteral("keyGear_%1").arg(k + 1));
        selector->addItems({ tr("单态"), tr("双态"), tr("三态") });
        SectionWidgets::fitItems(selector);
        m_keyKinds[size_t(k)] = selector;
        grid->addWidget(SectionWidgets::caption(QStringLiteral("Button_%1").arg(k + 1), body), row, column);
        grid->addWidget(selector, row, column + 1);
    }
    grid->setColumnStretch(2 * kKindColumns, 1);
    outer->addLayout(grid);
    return body;
}

int ButtonConfig::model() const
{
    const PageHost *host = PageHost::instance();
    return host ? host->currentModel() : 0;
}

// ---------------------------------------------------------------- sections

void ButtonConfig::on_dropDownButton_0_clicked()
{
    m_column->toggle(Combinations);
}

void ButtonConfig::on_dropDownButton_1_clicked()
{
    m_column->toggle(SuperKeys);
}

void ButtonConfig::on_dropDownButton_2_clicked()
{
    m_column->toggle(KeyKinds);
}

// ---------------------------------------------------------------- record <-> controls

void ButtonConfig::fillKeySelector(QComboBox *selector, int key) const
{
    const QSignalBlocker block(selector);
    selector->clear();
    selector->addItems(record().keyMapNames);
    // The list ends with "NONE", which the unit calls 255. A key beyond the
    // list (a unit or file with more keys) is shown by its number after the
    // names, and goes out unchanged until the user picks another.
    if (key == kNoSelection) {
        selector->setCurrentIndex(selector->count() - 1);
    } else if (key >= 0 && key < selector->count()) {
        selector->setCurrentIndex(key);
    } else {
        selector->addItem(QStringLiteral("#%1").arg(key), key);
        selector->setCurrentIndex(selector->count() - 1);
    }
}

int ButtonConfig::keyOf(const QComboBox *selector, int fallback)
{
    if (selector->currentText() == QLatin1String(kNone))
        return kNoSelection;
    const QVariant beyond = selector->currentData();
    if (beyond.isValid())
        return beyond.toInt();
    return selector->currentIndex() >= 0 ? selector->currentIndex() : fallback;
}

void ButtonConfig::showCombinations()
{
    const DeviceData &d = record();
    for (int i = 0; i < kKeyCombinations; ++i) {
        for (int k = 0; k < 2; ++k)
            fillKeySelector(m_comboKeys[size_t(i)][size_t(k)], d.ckeyMap[i][k]);
        m_comboSteps[size_t(i)]->setM_currentValue(d.ckeyMap[i][2]);
    }
}

void ButtonConfig::showSuperKeys()
{
    const DeviceData &d = record();
    for (int key = 0; key < kSuperKeys; ++key) {
        for (int j = 0; j < kPairs; ++j) {
            fillKeySelector(m_superKeys[size_t(key)][size_t(j)], d.sckeyMap[key][j]);
            m_superValues[size_t(key)][size_t(j)]->setM_currentValue(d.sckeyMap[key][kPairs + j]);
        }
    }
}

void ButtonConfig::showKeyKinds()
{
    const DeviceData &d = record();
    for (int k = 0; k < kKeyGears; ++k)
        SectionWidgets::selectIfValid(m_keyKinds[size_t(k)], d.keyGear[k]);
}

void ButtonConfig::refreshFromRecord()
{
    showCombinations();
    showSuperKeys();
    showKeyKinds();
}

ButtonCodec::Settings ButtonConfig::shownSettings() const
{
    ButtonCodec::Settings s = ButtonCodec::Settings::fromRecord(record());
    for (int i = 0; i < kKeyCombinations; ++i) {
        for (int k = 0; k < 2; ++k)
            s.ckeyMap[i][k] = keyOf(m_comboKeys[size_t(i)][size_t(k)], s.ckeyMap[i][k]);
        s.ckeyMap[i][2] = qRound(m_comboSteps[size_t(i)]->currentValue());
    }
    for (int key = 0; key < kSuperKeys; ++key) {
        for (int j = 0; j < kPairs; ++j) {
            s.sckeyMap[key][j] = keyOf(m_superKeys[size_t(key)][size_t(j)], s.sckeyMap[key][j]);
            s.sckeyMap[key][kPairs + j] = qRound(m_superValues[size_t(key)][size_t(j)]->currentValue());
        }
    }
    for (int k = 0; k < kKeyGears; ++k) {
        const int kind = m_keyKinds[size_t(k)]->currentIndex();
        if (kind >= 0)
            s.keyGear[k] = kind;
    }
    return s;
}

QList<QByteArray> ButtonConfig::collectPayloads()
{
    const ButtonCodec::Settings s = shownSettings();
    s.storeInto(record());
    return ButtonCodec::payloads(s, model());
}

QList<QByteArray> ButtonConfig::payloadsFromRecord()
{
    // The write-all sends what the page shows, as a write of the page does:
    // a file's values beyond the controls' bounds go out as shown.
    return collectPayloads();
}

QString ButtonConfig::fileFragment()
{
    // The file takes what the page shows, also before it was written.
    return ButtonCodec::fileFragment(shownSettings());
}

void ButtonConfig::slot_information(CodeID code, QByteArray data)
{
    switch (code) {
    case KeyCombinationData:
        if (ButtonCodec::decodeCombinations(data, record()))
            showCombinations();
        break;
    case SuperKeyData:
        if (ButtonCodec::decodeSuperKeys(data, record()))
            showSuperKeys();
        break;
    case KeyAttributeData:
        if (ButtonCodec::decodeKeyKinds(data, model(), record()))
            showKeyKinds();
        break;
    default:
        break;
    }
}
