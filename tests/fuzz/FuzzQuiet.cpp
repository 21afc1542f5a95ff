// Shared by every fuzz target: the program's logging is switched off before
// the first input. The readers log what they skip, and writing that to the
// terminal costs far more than the reading; a target should run at its
// reader's own speed. QM_FUZZ_LOG=1 in the environment keeps the logging, to
// follow what the program makes of one saved input (./fuzz_x crash-...).
// qFatal() still aborts, so a fatal message stays a finding.
#include <QLoggingCategory>
#include <QString>
#include <QtGlobal>

namespace
{

void dropMessage(QtMsgType, const QMessageLogContext &, const QString &)
{
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    if (qEnvironmentVariableIsEmpty("QM_FUZZ_LOG")) {
        // Disabled categories are not even formatted; the handler takes what
        // bypasses the categories (plain qDebug() and Qt's own warnings).
        QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
        qInstallMessageHandler(dropMessage);
    }
    return 0;
}
