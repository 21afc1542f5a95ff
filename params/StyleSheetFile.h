#pragma once

#include <QString>

#include <optional>

// The program's look, config/StyleSheets.qss beside the program. The main
// window and the windows that open on their own (the module windows) use the
// same text. Nothing when the file cannot be read; the text ends at a NUL.
namespace StyleSheetFile
{
std::optional<QString> read();
}
