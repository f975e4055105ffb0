#pragma once

// The whole program: arguments, the archive (created and filled on first
// start), the login, the module's start, the main window. Returns the exit
// status (0 done, 1 the archive or user could not be used, 2 bad usage).
int RunWorkstation(int argc, char** argv);
