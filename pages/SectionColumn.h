#pragma once

#include <QVector>
#include <QWidget>

class QPushButton;
class QScrollBar;

// The body of the setting pages that are a column of collapsible sections
// (button settings, comprehensive settings, custom output). Each section has
// a header button and a drop-down button; the drop-down button's dynamic
// property "urgent" holds whether the section is open, and its icon shows
// ":/button/image/takeBack.png" when open, ":/button/image/dropDown.png" when
// closed. Open sections show their editors under their header, one section
// under another. When the column is taller than the page it scrolls by
// dragging (and by the wheel), and a scroll bar at its side shows that it
// goes on (and moves it too).
//
// The pages keep their own slots for the drop-down buttons
// (on_dropDownButton_<n>_clicked) and call toggle() from them.
class SectionColumn : public QWidget
{
    Q_OBJECT
public:
    explicit SectionColumn(QWidget *parent = nullptr);

    // Adds a section and returns its number. The header button gets
    // headerName and headerText, the drop-down button the object name
    // "dropDownButton_<number>". The column takes the body over.
    int addSection(const QString &headerName, const QString &headerText, QWidget *body);

    int sectionCount() const { return m_sections.size(); }
    QPushButton *headerButton(int section) const;
    QPushButton *dropDownButton(int section) const;
    QWidget *body(int section) const;

    bool isExpanded(int section) const;
    void setExpanded(int section, bool expanded);
    // Flips "urgent" and the icon, then lays the column out again.
    void toggle(int section);

    int scrollOffset() const { return m_offset; }
    void setScrollOffset(int offset);
    // Height of all headers and open sections.
    int contentHeight() const;

    QSize sizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    struct Section {
        QWidget *header = nullptr;
        QPushButton *title = nullptr;
        QPushButton *dropDown = nullptr;
        QWidget *body = nullptr;
    };

    void relayout();
    int headerHeight() const;

    QVector<Section> m_sections;
    QScrollBar *m_scrollBar = nullptr;
    int m_offset = 0;
    bool m_dragging = false;
    int m_lastY = 0;
};
