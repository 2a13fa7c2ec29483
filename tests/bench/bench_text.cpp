#include "tests/bench/ratio.h"
#include "text/mtk2.h"

#include <QTextCodec>

// The code against a plain 8-bit codec on the same telegram: half its speed is more than any line asks for.

namespace
{
/// A telegram of 2,000 characters as an operator writes it, without marks: the encoder puts them in. No
/// two lines are the same, as in a text with a meaning.
QString telegram()
{
    const QStringList words =
        QStringLiteral("МОСКВА ПРОШУ СООБЩИТЬ О ПРИБЫТИИ ПОЕЗДА N 045 В 17.30, ВАГОН 9 (DESK B-2) "
                       "ОПЛАТУ ГАРАНТИРУЕМ= ИВАНОВ- 12/34 ПОДТВЕРДИТЕ ЗАКАЗ НОМЕР 7 ЭТАЖ НЕ ПОЗДНЕЕ "
                       "ЯНВАРЯ ТЧК ГРУЗ ОТПРАВЛЕН, ЖДИТЕ: ЩЕБЕНЬ +25 МЕШКОВ ЮГ? ОТВЕТ TELEX 414")
            .split(u' ');
    QString text;
    unsigned chosen = 1;
    for (int lineLength = 0; text.size() < 2000;) {
        chosen = chosen * 1103515245 + 12345;
        const QString &word = words.at(int(chosen >> 16) % words.size());
        text += word;
        lineLength += word.size() + 1;
        text += lineLength > 60 ? QStringLiteral("\r\n") : QStringLiteral(" ");
        lineLength = lineLength > 60 ? 0 : lineLength;
    }
    return text.left(2000);
}

QByteArray codesOf(const QString &text)
{
    QByteArray codes;
    int reg = 1;
    MTK2FromQString(text, codes, reg);
    return codes;
}

/// The same telegram as it is received: 2,000 characters, marks included.
QString receivedTelegram()
{
    QString text;
    int reg = 1;
    QStringFromMTK2(codesOf(telegram()), text, reg);
    return text.left(2000);
}

QTextCodec *koi8()
{
    return QTextCodec::codecForName("KOI8-R");
}

void EncodeMTK2(benchmark::State &state)
{
    const QString text = telegram();
    for (auto _ : state) {
        QByteArray codes;
        int reg = 1;
        MTK2FromQString(text, codes, reg);
        benchmark::DoNotOptimize(codes.constData());
    }
}
BENCHMARK(EncodeMTK2);

void EncodeKoi8(benchmark::State &state)
{
    const QString text = telegram();
    const QTextCodec *codec = koi8();
    for (auto _ : state) {
        const QByteArray bytes = codec->fromUnicode(text);
        benchmark::DoNotOptimize(bytes.constData());
    }
}
BENCHMARK(EncodeKoi8);

void DecodeMTK2(benchmark::State &state)
{
    const QByteArray codes = codesOf(receivedTelegram());
    for (auto _ : state) {
        QString text;
        int reg = 1;
        QStringFromMTK2(codes, text, reg);
        benchmark::DoNotOptimize(text.constData());
    }
}
BENCHMARK(DecodeMTK2);

void DecodeKoi8(benchmark::State &state)
{
    const QTextCodec *codec = koi8();
    const QByteArray bytes = codec->fromUnicode(receivedTelegram());
    for (auto _ : state) {
        const QString text = codec->toUnicode(bytes);
        benchmark::DoNotOptimize(text.constData());
    }
}
BENCHMARK(DecodeKoi8);
} // namespace

int main(int argc, char **argv)
{
    initMTK2Table();
    return Ratio::run(argc, argv,
                      {{"MTK2FromQString against KOI8-R, 2000 characters", "EncodeMTK2", "EncodeKoi8", 2.0},
                       {"QStringFromMTK2 against KOI8-R, 2000 characters", "DecodeMTK2", "DecodeKoi8", 2.0}});
}
