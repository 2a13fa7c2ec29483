#pragma once

/// Lets the toolkit's own boxes, menus and calendars speak Russian as the rest of the program does, whatever
/// the language of the system. Once, after the QApplication has been made and before its first window.
void speakRussian();
