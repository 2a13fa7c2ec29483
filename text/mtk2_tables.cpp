#include "text/mtk2.h"

// Cells by code, 11 in a line; cell 32 is a filler that no search looks at.
// clang-format off

MTKTable fromMTKcode_RUSSIAN = {
    {u'|', u'E', u'\n', u'A', u' ', u'S', u'I', u'U', u'\r', u'D', u'R',
     u'J', u'N', u'F', u'C', u'K', u'T', u'Z', u'L', u'W', u'H', u'Y',
     u'P', u'Q', u'O', u'B', u'G', u'#', u'M', u'X', u'V', u'&', u'^'},
    {u'|', u'Е', u'\n', u'А', u' ', u'С', u'И', u'У', u'\r', u'Д', u'Р',
     u'Й', u'Н', u'Ф', u'Ц', u'К', u'Т', u'З', u'Л', u'В', u'Х', u'Ы',
     u'П', u'Я', u'О', u'Б', u'Г', u'#', u'М', u'Ь', u'Ж', u'&', u'^'},
    {u'|', u'3', u'\n', u'-', u' ', u'\'', u'8', u'7', u'\r', u'*', u'4',
     u'Ю', u',', u'Э', u':', u'(', u'5', u'+', u')', u'2', u'Щ', u'6',
     u'0', u'1', u'9', u'?', u'Ш', u'#', u'.', u'/', u'=', u'&', u'^'}};

MTKTable fromMTKcode_GEORGIAN = {
    {u'|', u'E', u'\n', u'A', u' ', u'S', u'I', u'U', u'\r', u'D', u'R',
     u'J', u'N', u'F', u'C', u'K', u'T', u'Z', u'L', u'W', u'H', u'Y',
     u'P', u'Q', u'O', u'B', u'G', u'#', u'M', u'X', u'V', u'&', u'^'},
    {u'|', u'ე', u'\n', u'ა', u' ', u'ს', u'ი', u'უ', u'\r', u'დ', u'რ',
     u'ყ', u'ნ', u'ფ', u'ც', u'კ', u'ტ', u'ზ', u'ლ', u'ვ', u'ხ', u'ქ',
     u'პ', u'ჩ', u'ო', u'ბ', u'გ', u'#', u'მ', u'თ', u'ჟ', u'&', u'^'},
    {u'|', u'3', u'\n', u'-', u' ', u'ჭ', u'8', u'7', u'\r', u'*', u'4',
     u'წ', u',', u'ღ', u':', u'ჯ', u'5', u'+', u'ჰ', u'2', u'ძ', u'6',
     u'0', u'1', u'9', u'?', u'შ', u'#', u'.', u'/', u'=', u'&', u'^'}};

// The Armenian national row keeps the Cyrillic letter where the alphabet gave no letter to the code.
MTKTable fromMTKcode_ARMENIAN = {
    {u'|', u'E', u'\n', u'A', u' ', u'S', u'I', u'U', u'\r', u'D', u'R',
     u'J', u'N', u'F', u'C', u'K', u'T', u'Z', u'L', u'W', u'H', u'Y',
     u'P', u'Q', u'O', u'B', u'G', u'#', u'M', u'X', u'V', u'&', u'^'},
    {u'|', u'Ե', u'\n', u'Ա', u' ', u'С', u'Ի', u'У', u'\r', u'Դ', u'Р',
     u'Й', u'Н', u'Ф', u'Ծ', u'Կ', u'Թ', u'Զ', u'Լ', u'В', u'Հ', u'Ը',
     u'П', u'Է', u'О', u'Բ', u'Գ', u'#', u'М', u'Խ', u'Ժ', u'&', u'^'},
    {u'|', u'3', u'\n', u'-', u' ', u'\'', u'8', u'7', u'\r', u'*', u'4',
     u'Ю', u',', u'Э', u':', u'(', u'5', u'+', u')', u'2', u'Щ', u'6',
     u'0', u'1', u'9', u'?', u'Ш', u'#', u'.', u'/', u'=', u'&', u'^'}};

const MTKMask tatar[7] = {
    {u'Ә', QStringLiteral("???")}, {u'Ө', QStringLiteral("(((")}, {u'Ү', QStringLiteral(")))")},
    {u'Җ', QStringLiteral("///")}, {u'Ң', QStringLiteral(":::")}, {u'Һ', QStringLiteral("'''")},
    {u'\0', QString()}};

// clang-format on

Relaxed<MTKRows> fromMTKcode{fromMTKcode_RUSSIAN};
