#pragma once

#include <QMainWindow>
#include <QStringList>

namespace Ui
{
class HelpWidget;
}
class QTreeWidgetItem;

// The help window: one topic per configuration page, each a plain text file
// beside the program (Chinese, or English for every other locale), so the
// texts can be edited without rebuilding.
class HelpWidget : public QMainWindow
{
    Q_OBJECT
public:
    // localeName decides the language of the texts; empty means the
    // system's locale.
    explicit HelpWidget(QWidget *parent = nullptr, const QString &localeName = QString());
    ~HelpWidget() override;

Q_SIGNALS:
    // The window was closed.
    void signal_helpWidget();

protected:
    void closeEvent(QCloseEvent *event) override;

private Q_SLOTS:
    void slot_currentItemChanged(QTreeWidgetItem *current);

private:
    Ui::HelpWidget *ui;
    QStringList m_helpFiles; // per topic, in tree order
};
