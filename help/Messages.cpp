#include "Messages.h"

#include "MDlg.h"

#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QVector>

namespace
{
Messages::Responder &responder()
{
    static Messages::Responder r;
    return r;
}

Messages::ChoiceResponder &choiceResponder()
{
    static Messages::ChoiceResponder r;
    return r;
}

Messages::FileResponder &fileResponder()
{
    static Messages::FileResponder r;
    return r;
}

// The top window of the widget that asks: the main window for every page and
// every window the pages open. Nothing a reconnect rebuilds is a top window.
QWidget *ownerOf(QWidget *asker)
{
    QWidget *owner = asker;
    while (owner && owner->parentWidget())
        owner = owner->parentWidget();
    return owner;
}

void box(
    QMessageBox::Icon icon, Messages::Kind kind, QWidget *parent, const QString &title, const QString &text)
{
    if (responder()) {
        responder()(Messages::Shown { kind, title, text });
        return;
    }
    QPointer<QMessageBox> message = new QMessageBox(icon, title, text, QMessageBox::Ok, ownerOf(parent));
    message->exec();
    delete message.data();
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

void setChoiceResponder(ChoiceResponder r)
{
    choiceResponder() = std::move(r);
}

int choose(QWidget *parent, const QString &title, const QString &text, const QStringList &choices,
    int responderChoice, int escapeChoice)
{
    const Shown shown { Kind::Question, title, text };
    if (choiceResponder())
        return qBound(0, choiceResponder()(shown, choices), choices.size() - 1);
    if (responder()) {
        responder()(shown);
        return responderChoice;
    }
    // On the heap: the parent may go while the box is open.
    QPointer<QMessageBox> box
        = new QMessageBox(QMessageBox::Question, title, text, QMessageBox::NoButton, parent);
    QVector<QAbstractButton *> buttons;
    for (int i = 0; i < choices.size(); ++i) {
        const auto role = i == escapeChoice ? QMessageBox::RejectRole : QMessageBox::AcceptRole;
        buttons.append(box->addButton(choices.at(i), role));
    }
    if (escapeChoice >= 0 && escapeChoice < buttons.size())
        box->setEscapeButton(buttons.at(escapeChoice));
    box->exec();
    if (!box)
        return escapeChoice;
    const int taken = buttons.indexOf(box->clickedButton());
    box->deleteLater();
    return taken >= 0 ? taken : escapeChoice;
}

MDlg *newDialog(QWidget *asker, bool withButtons)
{
    return new MDlg(ownerOf(asker), withButtons);
}

bool exec(MDlg *dialog, QObject *asker)
{
    const QPointer<QObject> askerAlive(asker);
    const QPointer<MDlg> alive(dialog);
    if (!responder()) {
        dialog->exec();
    } else {
        const bool answer = responder()(Shown { Kind::Dialog, dialog->windowTitle(), dialog->text() });
        if (alive && alive->hasButtons()) {
            const char *name = answer ? "pushButton_yes" : "pushButton_no";
            if (auto *button = alive->findChild<QPushButton *>(QLatin1String(name)))
                button->click();
        }
    }
    delete alive.data();
    return !askerAlive.isNull();
}

} // namespace Messages
