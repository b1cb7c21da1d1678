#include "App/VeConsole.h"

#include <cstdio>
#include <iostream>

VeConsole::VeConsole() {
    std::clearerr(stdin);
    std::clearerr(stdout);
    std::clearerr(stderr);
    std::cin.clear();
    std::cout.clear();
    std::cerr.clear();
    std::wcin.clear();
    std::wcout.clear();
    std::wcerr.clear();
}

VeConsole::~VeConsole() {
    std::cout.flush();
    std::wcout.flush();
    std::fflush(stdout);
    std::fflush(stderr);
}
