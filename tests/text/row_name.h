#pragma once

#include <QByteArray>

/// \a text as the name of a test row: control characters shown as "~".
inline QByteArray rowName(QByteArray text)
{
    for (char &c : text)
        if (uchar(c) < ' ')
            c = '~';
    return text;
}
