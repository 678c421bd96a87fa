#include "CommandLine.h"
#include "CompanionMain.h"

int main(int argc, char** argv) {
    return CompanionMain("qeli", argc, argv, RunCommandLine);
}
