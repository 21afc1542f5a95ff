#include "Messages.h"

#include "MDlg.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace
{
Messages::Responder &responder()
{
    static Messages::Responder r;
    return r;
}

Messages::FileResponder &fileResponder()
{
    static Messages::FileResponder r;
    return r;
}

void box(
    QMessageBox::Icon icon, Messages::Kind kind, QWidget *parent, const QString &title, const QString &text)
{
    if (responder()) {
        responder()(Messages::Shown { kind, title, text });
        return;
    }
    QMessageBox message(icon, title, text, QMessageBox::Ok, parent);
    message.exec();
}
} // namespace

namespace Messages
{

void setResponder(Responder r)
{
    responder() = std::move(r);
}

void warning(QWidget *parent, const QString &title, const QString &text)
{
    box(QMessageBox::Warning, Kind::Warning, parent, title, text);
}

void critical(QWidget *parent, const QString &title, const QString &text)
{
    box(QMessageBox::Critical, Kind::Critical, parent, title, text);
}

void information(QWidget *parent, const QString &title, const QString &text)
{
    box(QMessageBox::Information, Kind::Information, parent, title, text);
}

void setFileResponder(FileResponder r)
{
    fileResponder() = std::move(r);
}

QString saveFileName(QWidget *parent, const QString &caption, const QString &startPath, const QString &filter)
{
    if (fileResponder())
        return fileResponder()(caption, startPath, filter);
    return QFileDialog::getSaveFileName(parent, caption, startPath, filter);
}

QString openFileName(QWidget *parent, const QString &caption, const QString &startPath, const QString &filter)
{
    if (fileResponder())
        return fileResponder()(caption, startPath, filter);
    return QFileDialog::getOpenFileName(parent, caption, startPath, filter);
}

void exec(MDlg *dialog)
{
    if (!responder()) {
        dialog->exec();
        return;
    }
    const bool answer = responder()(Shown { Kind::Dialog, dialog->windowTitle(), dialog->text() });
    if (dialog->hasButtons()) {
        const char *name = answer ? "pushButton_yes" : "pushButton_no";
        if (auto *button = dialog->findChild<QPushButton *>(QLatin1String(name)))
            button->click();
    }
}

} // namespace Messages
