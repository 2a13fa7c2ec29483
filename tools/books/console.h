#pragma once

/// Has the console show UTF-8, where it does not do so by itself.
void prepareConsole();
