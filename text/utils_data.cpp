#include "text/utils.h"

#include "text/mtk2.h"

#include <QTextCodec>

// Bytes of files and adapters: checksum, values of a reply, code page of a file of unknown origin.

namespace
{
/// How many bytes speak for each encoding.
struct CodePageVotes {
    int utf8 = 0;
    int cp866 = 0;
    int cp1251 = 0;
};

CodePageVotes countVotes(const QByteArray &bytes)
{
    CodePageVotes votes;
    for (int i = 0; i < bytes.size(); ++i) {
        const auto byte = uchar(bytes.at(i));
        if (byte == 0xD0 || byte == 0xD1) { // first byte of a Cyrillic letter in UTF-8
            ++votes.utf8;
            ++i;
        } else if (byte >= 0x80 && byte <= 0xAF) {
            ++votes.cp866;
        } else if (byte >= 0xC0 && byte <= 0xDF) {
            ++votes.cp1251;
        }
    }
    return votes;
}

QString decode(const QByteArray &bytes, const char *codecName)
{
    const QTextCodec *codec = QTextCodec::codecForName(codecName);
    return codec ? codec->toUnicode(bytes) : QString::fromLatin1(bytes);
}

constexpr bool isWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Reads a flat reply from left to right; at its end peek() gives a zero byte.
class ReplyScanner
{
public:
    ReplyScanner(const QByteArray &bytes, int position) : m_bytes(bytes), m_position(position) {}

    [[nodiscard]] char peek() const { return m_position < m_bytes.size() ? m_bytes.at(m_position) : '\0'; }
    void skipWhiteSpace()
    {
        while (isWhiteSpace(peek()))
            ++m_position;
    }
    bool take(char c)
    {
        if (peek() != c)
            return false;
        ++m_position;
        return true;
    }
    QByteArray takeDigits()
    {
        const int begin = m_position;
        while (isDigit(peek()))
            ++m_position;
        return m_bytes.mid(begin, m_position - begin);
    }
    /// All up to the next double quote; empty if there is none.
    [[nodiscard]] QByteArray untilQuote() const
    {
        const int end = m_bytes.indexOf('"', m_position);
        return end < 0 ? QByteArray() : m_bytes.mid(m_position, end - m_position);
    }

private:
    const QByteArray &m_bytes;
    int m_position;
};

QByteArray numberAt(ReplyScanner scanner)
{
    const QByteArray digits = scanner.takeDigits();
    scanner.skipWhiteSpace();
    return scanner.peek() == ',' || scanner.peek() == '}' ? digits : QByteArray();
}
} // namespace

unsigned char CUtils::CRC8(QByteArray bytes)
{
    constexpr unsigned Polynomial = 0x31;
    unsigned crc = 0xFF;
    for (const char byte : qAsConst(bytes)) {
        crc ^= uchar(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = ((crc & 0x80) != 0 ? crc << 1 ^ Polynomial : crc << 1) & 0xFF;
    }
    return uchar(crc);
}

QString CUtils::getValueFromJSON(QByteArray &json, const char *name)
{
    const int at = json.indexOf(name);
    if (at <= 0)
        return QString();
    const char before = json.at(at - 1);
    if (before != ',' && before != '{' && before != ' ')
        return QString();
    ReplyScanner scanner(json, at + int(qstrlen(name)));
    scanner.skipWhiteSpace();
    if (!scanner.take(':'))
        return QString();
    scanner.skipWhiteSpace();
    return QString::fromUtf8(scanner.take('"') ? scanner.untilQuote() : numberAt(scanner));
}

QString CUtils::CorrectCodePageToUtf8(const QByteArray &bytes)
{
    const CodePageVotes votes = countVotes(bytes);
    if (votes.utf8 >= qMax(votes.cp866, votes.cp1251))
        return QString::fromUtf8(bytes.constData()); // ends at a zero byte
    if (votes.cp866 < votes.cp1251)
        return decode(bytes.toUpper(), "Windows-1251");
    return upperMTK2(decode(bytes, "IBM-866"));
}
