#include "host/HUTConsole.h"

#include <iostream>

void HUTConsole::out(const std::string& text) { std::cout << text << std::flush; }

void HUTConsole::err(const std::string& text) { std::cerr << text << std::flush; }
