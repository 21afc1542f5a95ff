#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

// Decisions of the start-up that need no window, kept apart to be testable.
namespace StartupRules {

constexpr int kWindowWidth = 1280;
constexpr int kWindowHeight = 800;
// The smallest window in which every model page and the hub still read:
// switch labels apart, the calibration text clear of the channel
// configuration button, channel bars wide enough to show their value.
constexpr int kMinimumWidth = 1024;
constexpr int kMinimumHeight = 600;

// The key of the single-instance guard: "QuillmarkRunGuardKey", followed by
// the instance name when one is given (QUILLMARK_INSTANCE), so that a test
// run of the program does not meet the user's running window.
QString guardKey(const QString &instanceName);

// The translation to load, relative to the application directory: Chinese
// for exactly zh_CN, English for every other locale (zh_TW and zh included).
QString translationFile(const QString &localeName);

// What `quillmark --help` (or -h) and `quillmark --version` print before the
// program ends without opening a window; empty for any other command line.
QString commandLineAnswer(const QStringList &arguments, const QString &version);

struct Placement {
    bool maximise = false;
    QRect geometry; // when not maximised: 1280 x 800 centred in the available area
};
// The window takes 1280 x 800 only on a screen whose available area is
// strictly larger in both directions; otherwise it is maximised.
Placement placeWindow(const QRect &available);

} // namespace StartupRules
