// quillmark-pageshots OUTDIR: renders every model page with live values from
// the virtual unit, at the main window's size and at its smallest size, and
// the configuration hub for each radio module kind, to PNG files (offscreen).
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "DeviceData.h"
#include "ModelInterface.h"
#include "ModelSpec.h"
#include "PageHost.h"
#include "StartupRules.h"
#include "UnitModel.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTextStream>
#include <QTranslator>

namespace {

struct ShotHost : PageHost {
    DeviceData data;
    DeviceData &deviceData() override { return data; }
    int currentModel() const override { return 0; }
    QString dialogStyleSheet() const override { return QString(); }
    void showHub() override {}
    void showModelPage() override {}
};

bool save(QWidget *widget, const QSize &size, const QString &path)
{
    widget->resize(size);
    const bool ok = widget->grab().save(path);
    QTextStream(stdout) << (ok ? "wrote " : "FAILED ") << path << '\n';
    return ok;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    if (argc < 2) {
        QTextStream(stderr) << "usage: quillmark-pageshots OUTDIR\n";
        return 2;
    }
    const QString out = QString::fromLocal8Bit(argv[1]);
    // The pictures and model files are those staged beside the program.
    if (qEnvironmentVariableIsEmpty("QUILLMARK_APP_DIR"))
        AppPaths::setAppDir(QStringLiteral(QM_APP_DIR));
    QDir().mkpath(out);

    // The program's translation for this locale (English outside zh_CN).
    QTranslator translator;
    if (translator.load(AppPaths::file(StartupRules::translationFile(QLocale::system().name()))))
        QApplication::installTranslator(&translator);

    QFile sheet(AppPaths::file(QStringLiteral("/config/StyleSheets.qss")));
    if (sheet.open(QIODevice::ReadOnly))
        app.setStyleSheet(QString::fromUtf8(sheet.readAll()));

    const QSize full(StartupRules::kWindowWidth, StartupRules::kWindowHeight);
    const QSize smallest(StartupRules::kMinimumWidth, StartupRules::kMinimumHeight);
    ShotHost host;
    bool ok = true;
    for (int model = 0; model < kModelCount; ++model) {
        Vunit::UnitConfig config;
        config.model = Vunit::Model(model);
        Vunit::UnitModel unit(config);
        QStringList notes;
        unit.handle(0xE5, QByteArray::fromHex("0232"), 0, &notes);

        ModelInterface *page = createModelPage(model, nullptr);
        const QString name = modelSpec(model).identifier.toLower();
        for (qint64 t : { 1700, 5300 }) {
            page->slot_information(ChannelDataReport, unit.reportPayload(t).mid(1));
            ok &= save(page, full, QStringLiteral("%1/%2_%3ms.png").arg(out, name).arg(t));
        }
        page->slot_information(CalibrationStarted, QByteArray());
        ok &= save(page, full, QStringLiteral("%1/%2_calibrating.png").arg(out, name));
        ok &= save(page, smallest, QStringLiteral("%1/%2_smallest.png").arg(out, name));
        delete page;
    }

    for (int module = 0; module < 3; ++module) {
        host.data.m_module = module;
        ChannelListenInterface hub(0);
        ok &= save(&hub, full, QStringLiteral("%1/hub_module%2.png").arg(out).arg(module));
        hub.on_comprehensiveConfig_clicked();
        ok &= save(&hub, smallest, QStringLiteral("%1/hub_module%2_smallest.png").arg(out).arg(module));
    }
    return ok ? 0 : 1;
}
