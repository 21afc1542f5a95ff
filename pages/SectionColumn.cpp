#include "SectionColumn.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QWheelEvent>

namespace
{
const char kExpanded[] = "urgent";
const char kOpenIcon[] = ":/button/image/takeBack.png";
const char kClosedIcon[] = ":/button/image/dropDown.png";
constexpr int kSectionGap = 6;
constexpr int kBodyIndent = 20;
} // namespace

SectionColumn::SectionColumn(QWidget *parent)
    : QWidget(parent)
{
    Q_INIT_RESOURCE(page_icons);
    setObjectName(QStringLiteral("sectionColumn"));
    m_scrollBar = new QScrollBar(Qt::Vertical, this);
    m_scrollBar->setObjectName(QStringLiteral("columnScrollBar"));
    m_scrollBar->setFocusPolicy(Qt::NoFocus);
    m_scrollBar->hide();
    connect(m_scrollBar, &QScrollBar::valueChanged, this, &SectionColumn::setScrollOffset);
}

int SectionColumn::addSection(const QString &headerName, const QString &headerText, QWidget *body)
{
    const int number = m_sections.size();
    Section s;
    s.header = new QWidget(this);
    s.header->setObjectName(headerName + QStringLiteral("Row"));
    auto *row = new QHBoxLayout(s.header);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);

    s.dropDown = new QPushButton(s.header);
    s.dropDown->setObjectName(QStringLiteral("dropDownButton_%1").arg(number));
    s.dropDown->setFocusPolicy(Qt::NoFocus);
    s.dropDown->setProperty(kExpanded, false);
    s.dropDown->setIcon(QIcon(QString::fromLatin1(kClosedIcon)));
    s.dropDown->setIconSize(QSize(20, 20));
    s.dropDown->setFlat(true);

    s.title = new QPushButton(headerText, s.header);
    s.title->setObjectName(headerName);
    s.title->setFocusPolicy(Qt::NoFocus);
    s.title->setStyleSheet(QStringLiteral("text-align: left;"));
    // The whole header opens and closes its section, as its arrow does.
    connect(s.title, &QPushButton::clicked, s.dropDown, &QPushButton::click);

    row->addWidget(s.dropDown);
    row->addWidget(s.title, 1);

    s.body = body;
    body->setParent(this);
    body->hide();
    m_sections.append(s);
    relayout();
    return number;
}

QPushButton *SectionColumn::headerButton(int section) const
{
    return section >= 0 && section < m_sections.size() ? m_sections.at(section).title : nullptr;
}

QPushButton *SectionColumn::dropDownButton(int section) const
{
    return section >= 0 && section < m_sections.size() ? m_sections.at(section).dropDown : nullptr;
}

QWidget *SectionColumn::body(int section) const
{
    return section >= 0 && section < m_sections.size() ? m_sections.at(section).body : nullptr;
}

bool SectionColumn::isExpanded(int section) const
{
    const QPushButton *button = dropDownButton(section);
    return button && button->property(kExpanded).toBool();
}

void SectionColumn::setExpanded(int section, bool expanded)
{
    QPushButton *button = dropDownButton(section);
    if (!button)
        return;
    button->setProperty(kExpanded, expanded);
    button->setIcon(QIcon(QString::fromLatin1(expanded ? kOpenIcon : kClosedIcon)));
    relayout();
    update();
}

void SectionColumn::toggle(int section)
{
    setExpanded(section, !isExpanded(section));
}

int SectionColumn::headerHeight() const
{
    return qMax(30, fontMetrics().height() * 2);
}

int SectionColumn::contentHeight() const
{
    int h = 0;
    for (int i = 0; i < m_sections.size(); ++i) {
        h += headerHeight() + kSectionGap;
        if (isExpanded(i))
            h += m_sections.at(i).body->sizeHint().height() + kSectionGap;
    }
    return h;
}

void SectionColumn::setScrollOffset(int offset)
{
    // Only a column taller than the page scrolls.
    const int room = contentHeight() - height();
    const int bounded = room > 0 ? qBound(0, offset, room) : 0;
    if (bounded == m_offset)
        return;
    m_offset = bounded;
    relayout();
}

void SectionColumn::relayout()
{
    const int room = contentHeight() - height();
    m_offset = room > 0 ? qBound(0, m_offset, room) : 0;
    int y = -m_offset;
    int w = width();
    // Only a column taller than the page shows the bar; the sections then
    // leave it its room.
    if (room > 0) {
        const int bar = m_scrollBar->sizeHint().width();
        const QSignalBlocker block(m_scrollBar);
        m_scrollBar->setRange(0, room);
        m_scrollBar->setPageStep(height());
        m_scrollBar->setSingleStep(headerHeight());
        m_scrollBar->setValue(m_offset);
        m_scrollBar->setGeometry(w - bar, 0, bar, height());
        m_scrollBar->show();
        m_scrollBar->raise();
        w -= bar + kSectionGap;
    } else {
        m_scrollBar->hide();
    }
    for (int i = 0; i < m_sections.size(); ++i) {
        const Section &s = m_sections.at(i);
        s.header->setGeometry(0, y, w, headerHeight());
        s.header->show();
        y += headerHeight() + kSectionGap;
        if (isExpanded(i)) {
            const int h = s.body->sizeHint().height();
            s.body->setGeometry(kBodyIndent, y, qMax(0, w - kBodyIndent), h);
            s.body->show();
            y += h + kSectionGap;
        } else {
            s.body->hide();
        }
    }
}

QSize SectionColumn::sizeHint() const
{
    int w = 0;
    for (const Section &s : m_sections)
        w = qMax(w, s.body->sizeHint().width() + kBodyIndent);
    return QSize(w, contentHeight());
}

bool SectionColumn::event(QEvent *event)
{
    // A body that changes what it holds asks for a new layout. A hidden
    // column (a hub page not shown) waits until it is shown: measuring the
    // bodies is not cheap, and a page polished by the hub asks often.
    if (event->type() == QEvent::LayoutRequest && isVisible())
        relayout();
    else if (event->type() == QEvent::Show)
        relayout();
    return QWidget::event(event);
}

void SectionColumn::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    relayout();
}

void SectionColumn::mousePressEvent(QMouseEvent *event)
{
    m_dragging = true;
    m_lastY = event->pos().y();
}

void SectionColumn::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging)
        return;
    const int y = event->pos().y();
    setScrollOffset(m_offset + (m_lastY - y));
    m_lastY = y;
}

void SectionColumn::mouseReleaseEvent(QMouseEvent *)
{
    m_dragging = false;
}

void SectionColumn::wheelEvent(QWheelEvent *event)
{
    setScrollOffset(m_offset - event->angleDelta().y() / 4);
    event->accept();
}
