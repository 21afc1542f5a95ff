#pragma once

// The process entry of Quillmark: single-instance guard, translation, the
// main window and the event loop. Returns the exit code, -1 when another
// instance is already running.
int runQuillmark(int argc, char **argv);

// What the process sets up before its QApplication: the program paints with
// the raster engine alone, so Qt's X11 plugin is kept from loading the OpenGL
// driver (with Mesa that is LLVM, some 50 MB of resident memory for nothing).
// QT_XCB_GL_INTEGRATION set by the user wins. Scaling follows the screen's
// resolution (high-DPI scaling and pixmaps).
void prepareProcessEnvironment();
