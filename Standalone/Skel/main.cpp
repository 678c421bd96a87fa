#include "CommandLine.h"
#include "CompanionMain.h"

int main(int argc, char** argv) {
    return CompanionMain("skel", argc, argv, RunCommandLine);
}
