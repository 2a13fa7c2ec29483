#include "text/utils.h"

#include <cstdarg>
#include <optional>

// Templates of fixed-form lines. A template is matched character by character; "%%" is a percent sign,
// "% " a run of spaces, and so is a plain space, since operators and centres pad the parts of a line. A
// field is "%", an optional ".", an optional width of one or two digits and a letter. With "." the width
// is a limit, without it the field has exactly that length; without a width it takes all that fits. Each
// letter has its own way with the end of the text and with white space.

namespace
{
struct Field {
    int width = 0; ///< 0: as long as the characters go
    bool shorterAllowed = false;
    ushort letter = 0;
};

/// How reading the characters of a field ended.
enum class Stop { Width, OtherCharacter, WhiteSpace, EndOfText };

/// Matches one text against one template.
class Matcher
{
public:
    Matcher(const QString &format, const QString &text) : m_format(format), m_text(text) {}

    /// Matches up to the next field of the template. Empty at a mismatch, at the template's end, and at a
    /// field that is not one.
    std::optional<Field> nextField();
    bool read(const Field &field, void *destination);

private:
    using Belongs = bool (*)(QChar);

    bool takeOrdinary();
    bool takeSpaces();
    void skipSpaces();
    Field takeField();
    Stop takeCharacters(const Field &field, Belongs belongs, QString &taken);
    bool readNumber(const Field &field, int &value);
    bool readDigits(const Field &field, QString &text);
    bool readLetters(const Field &field, QString &text);
    bool readWord(const Field &field, QString &text);

    [[nodiscard]] bool textEnded() const { return m_textAt >= m_text.size(); }
    [[nodiscard]] ushort formatChar(int ahead = 0) const
    {
        return m_formatAt + ahead < m_format.size() ? m_format.at(m_formatAt + ahead).unicode() : ushort(0);
    }

    const QString &m_format;
    const QString &m_text;
    int m_formatAt = 0;
    int m_textAt = 0;
};

bool isLetter(QChar c)
{
    const ushort u = c.unicode();
    if (u < 0x80)
        return (u >= 'A' && u <= 'Z') || (u >= 'a' && u <= 'z');
    return c.isLetter();
}

bool isDigit(QChar c)
{
    return c.isDigit();
}

bool isNoSpace(QChar c)
{
    return !c.isSpace();
}

/// Whether a field that found its characters is long enough.
bool isComplete(const Field &field, Stop stop, int length)
{
    if (stop == Stop::Width)
        return true;
    return length > 0 && (field.width == 0 || field.shorterAllowed);
}

std::optional<Field> ifKnown(const Field &field)
{
    switch (field.letter) {
    case 'd':
    case 'D':
    case 'A':
    case 's': return field;
    default: return std::nullopt;
    }
}

std::optional<Field> Matcher::nextField()
{
    while (m_formatAt < m_format.size()) {
        if (formatChar() == '%' && formatChar(1) == ' ') {
            if (!takeSpaces())
                return std::nullopt;
        } else if (formatChar() == '%' && formatChar(1) != '%') {
            return ifKnown(takeField());
        } else if (!takeOrdinary()) {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

bool Matcher::takeOrdinary()
{
    if (textEnded() || m_text.at(m_textAt) != QChar(formatChar()))
        return false;
    const bool endsInSpace = formatChar() == ' ' && formatChar(1) != ' ';
    m_formatAt += formatChar() == '%' ? 2 : 1;
    ++m_textAt;
    if (endsInSpace)
        skipSpaces();
    return true;
}

bool Matcher::takeSpaces()
{
    m_formatAt += 2;
    const int begin = m_textAt;
    skipSpaces();
    return m_textAt > begin;
}

void Matcher::skipSpaces()
{
    while (!textEnded() && m_text.at(m_textAt) == u' ')
        ++m_textAt;
}

Field Matcher::takeField()
{
    Field field;
    ++m_formatAt; // the percent sign
    if (formatChar() == '.') {
        field.shorterAllowed = true;
        ++m_formatAt;
    }
    for (int digits = 0; digits < 2 && formatChar() >= '0' && formatChar() <= '9'; ++digits, ++m_formatAt)
        field.width = field.width * 10 + (formatChar() - '0');
    field.letter = formatChar();
    ++m_formatAt;
    return field;
}

bool Matcher::read(const Field &field, void *destination)
{
    switch (field.letter) {
    case 'd': return readNumber(field, *static_cast<int *>(destination));
    case 'D': return readDigits(field, *static_cast<QString *>(destination));
    case 'A': return readLetters(field, *static_cast<QString *>(destination));
    case 's': return readWord(field, *static_cast<QString *>(destination));
    default: return false;
    }
}

Stop Matcher::takeCharacters(const Field &field, Belongs belongs, QString &taken)
{
    for (int length = 0; field.width == 0 || length < field.width; ++length) {
        if (textEnded())
            return Stop::EndOfText;
        const QChar c = m_text.at(m_textAt);
        if (!belongs(c))
            return c.isSpace() ? Stop::WhiteSpace : Stop::OtherCharacter;
        taken += c;
        ++m_textAt;
    }
    return Stop::Width;
}

bool Matcher::readNumber(const Field &field, int &value)
{
    QString digits;
    const bool endedBefore = textEnded();
    const Stop stop = takeCharacters(field, isDigit, digits);
    const bool isZero = endedBefore && field.width != 0; // a number that was not sent any more
    if (!isZero && !isComplete(field, stop, digits.size()))
        return false;
    unsigned number = 0; // a run of digits too long for a number wraps
    for (const QChar digit : qAsConst(digits))
        number = number * 10 + unsigned(digit.digitValue());
    value = int(number);
    return true;
}

bool Matcher::readDigits(const Field &field, QString &text)
{
    QString digits;
    const Stop stop = takeCharacters(field, isDigit, digits);
    text += digits;
    return isComplete(field, stop, digits.size()) || (field.width != 0 && stop == Stop::WhiteSpace);
}

bool Matcher::readLetters(const Field &field, QString &text)
{
    QString letters;
    const bool endedBefore = textEnded();
    const Stop stop = takeCharacters(field, isLetter, letters);
    text += letters;
    return isComplete(field, stop, letters.size()) || (endedBefore && field.width != 0);
}

bool Matcher::readWord(const Field &field, QString &text)
{
    QString word;
    const Stop stop = takeCharacters(field, isNoSpace, word);
    text += word;
    return isComplete(field, stop, word.size()) || (field.width == 0 && stop == Stop::WhiteSpace);
}
} // namespace

int CUtils::testTemplate(QString format, QString text, ...)
{
    if (text.isEmpty())
        return 0;
    Matcher matcher(format, text);
    int count = 0;
    va_list destinations;
    va_start(destinations, text);
    while (const std::optional<Field> field = matcher.nextField()) {
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): it is, above
        void *destination = va_arg(destinations, void *);
        if (!destination || !matcher.read(*field, destination))
            break;
        ++count;
    }
    va_end(destinations);
    return count;
}
