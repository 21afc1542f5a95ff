#pragma once

#include <QDialog>

namespace Ui {
class MDlg;
}

// The program's own small modal dialog: a warning, or a yes/no question whose
// answer arrives through signal_dialog(bool), so the asking page decides in
// its slot_dialog(bool) what to do.
class MDlg : public QDialog
{
    Q_OBJECT
public:
    // Without buttons the dialog only shows its message and is closed by its
    // title bar.
    explicit MDlg(QWidget *parent = nullptr, bool withButtons = true);
    ~MDlg() override;

    void setText(const QString &text);
    QString text() const;
    bool hasButtons() const { return m_withButtons; }

Q_SIGNALS:
    void signal_dialog(bool state);

private Q_SLOTS:
    void on_pushButton_yes_clicked();
    void on_pushButton_no_clicked();

private:
    Ui::MDlg *ui;
    bool m_withButtons;
};
