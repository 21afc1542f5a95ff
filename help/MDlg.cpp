#include "MDlg.h"

#include "ui_MDlg.h"

MDlg::MDlg(QWidget *parent, bool withButtons)
    : QDialog(parent)
    , ui(new Ui::MDlg)
    , m_withButtons(withButtons)
{
    ui->setupUi(this);
    ui->pushButton_yes->setVisible(withButtons);
    ui->pushButton_no->setVisible(withButtons);
}

MDlg::~MDlg()
{
    delete ui;
}

void MDlg::setText(const QString &text)
{
    ui->label->setText(QString::fromUtf8(text.toUtf8()));
}

QString MDlg::text() const
{
    return ui->label->text();
}

void MDlg::on_pushButton_yes_clicked()
{
    Q_EMIT signal_dialog(true);
    close();
}

void MDlg::on_pushButton_no_clicked()
{
    Q_EMIT signal_dialog(false);
    close();
}
