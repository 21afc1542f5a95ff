#pragma once

#include <QString>
#include <QStringList>

#include <functional>

class MDlg;
class QObject;
class QWidget;

// Every message box and confirmation of the program goes through here, so
// that a test can read what would have been shown and answer the dialogs
// without a modal loop.
namespace Messages
{

enum class Kind { Warning, Critical, Information, Dialog, Question };

struct Shown {
    Kind kind;
    QString title;
    QString text;
};

// A responder sees every message instead of the user; for a dialog with
// buttons its answer is clicked ("是" for true, "否" for false). An empty
// responder restores the real boxes.
using Responder = std::function<bool(const Shown &)>;
void setResponder(Responder responder);

void warning(QWidget *parent, const QString &title, const QString &text);
void critical(QWidget *parent, const QString &title, const QString &text);
void information(QWidget *parent, const QString &title, const QString &text);

// The file dialogs of the parameter file. A file responder answers them
// instead of the user (an empty name is a cancelled dialog); an empty
// responder restores the real dialogs.
using FileResponder
    = std::function<QString(const QString &caption, const QString &startPath, const QString &filter)>;
void setFileResponder(FileResponder responder);
QString saveFileName(
    QWidget *parent, const QString &caption, const QString &startPath, const QString &filter);
QString openFileName(
    QWidget *parent, const QString &caption, const QString &startPath, const QString &filter);

// A dialog that asks on behalf of a page. The pages belong to the hub, and a
// reconnect rebuilds the hub whenever the unit answers again, also while a
// dialog is open; so the dialog never belongs to the asker. It lives on the
// heap, owned by the asker's top window (the main window), which outlives
// every page.
MDlg *newDialog(QWidget *asker, bool withButtons);

// Runs a dialog of newDialog() modally (title, style sheet, text and the
// connection of signal_dialog already made by the caller) and deletes it.
// Returns false when the asker was destroyed while the dialog was open: the
// caller then touches nothing of itself.
bool exec(MDlg *dialog, QObject *asker);

// A question with more than two answers: a message box with one button per
// choice, owned by `parent` (a window that outlives it), Escape giving
// `escapeChoice`. Returns the index of the choice taken. A choice responder
// answers instead of the user; without one, a plain responder is shown the
// question and it is answered with `responderChoice`.
using ChoiceResponder = std::function<int(const Shown &, const QStringList &choices)>;
void setChoiceResponder(ChoiceResponder responder);
int choose(QWidget *parent, const QString &title, const QString &text, const QStringList &choices,
    int responderChoice, int escapeChoice);

} // namespace Messages
