#include "tests/app/run/note_program.h"

#include "tests/support/desk.h"

QString noteProgram(const Desk &desk)
{
    desk.write("note.bat", "@echo off\r\n"
                           "set word=%1\r\n"
                           "if \"%1\"==\"\" set word=none\r\n"
                           "echo %word%>note.tmp\r\n"
                           "ren note.tmp note.txt\r\n");
    return desk.path("note.bat");
}
