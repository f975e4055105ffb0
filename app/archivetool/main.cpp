#include "archivetool.h"

#include <iostream>

int main(int argc, char** argv)
{
    std::vector<std::string> args(argv + 1, argv + argc);
    return RunArchiveTool(args, std::cout, std::cerr);
}
