#pragma once

// The process entry of Quillmark: single-instance guard, translation, the
// main window and the event loop. Returns the exit code, -1 when another
// instance is already running.
int runQuillmark(int argc, char **argv);
