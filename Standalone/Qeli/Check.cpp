#include "Check.h"

#include "LoadDocument.h"

#include <VokLib/Tree/VokWorld.h>

#include <exception>
#include <iostream>

bool Check(const std::vector<std::string>& paths) {
    bool allFine = true;
    for (const std::string& path : paths) {
        try {
            VokWorld world;
            LoadDocument(world, path);
            std::cout << path << ": OK" << std::endl;
        } catch (const std::exception& failure) {
            std::cerr << failure.what() << std::endl;
            allFine = false;
        }
    }
    return allFine;
}
