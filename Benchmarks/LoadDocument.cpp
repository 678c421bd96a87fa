// LoadDocument FILE loads a document into a world and does nothing with it.

#include <VokLib/Document/VokParse.h>
#include <VokLib/Library/VokLib.h>
#include <VokLib/Tree/VokWorld.h>

#include <exception>
#include <iostream>

int main(int count, char** arguments) {
    if (count != 2) return 1;
    try {
        const VokLib library(true, true, true, true, true);
        VokWorld world;
        VokParse parse;
        parse.SetAllowUpdate(true);
        parse.ParseFile(world, arguments[1]);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
    return 0;
}
