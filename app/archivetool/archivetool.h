#pragma once

#include <iosfwd>
#include <string>
#include <vector>

// The bravik-archive command line: parses the arguments, runs one command
// and returns the process exit code (0 done, 1 failed or violations found,
// 2 bad usage). Output goes to `out`, messages and progress to `err`.
int RunArchiveTool(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
