#include "tests/app/run/note_program.h"

#include "tests/support/desk.h"

#include <QFile>

QString noteProgram(const Desk &desk)
{
    desk.write("note.sh", "#!/bin/sh\necho \"${1-none}\" > note.tmp && mv note.tmp note.txt\n");
    QFile::setPermissions(desk.path("note.sh"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return desk.path("note.sh");
}
