#include "workstationapp.h"

int main(int argc, char** argv) { return RunWorkstation(argc, argv); }
