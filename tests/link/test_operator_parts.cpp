// Whose text the send buffer holds, by rules and against a model that keeps one owner for each character.

#include "link/shared_strings.h"

#include <QRandomGenerator>
#include <QtTest>

class TestOperatorParts : public QObject
{
    Q_OBJECT

private slots:
    void onlyTheOperatorsSignsAreLineEnds();
    void headTakesItsOwnersAlong();
    void cutWithinAPartGivesBothAShare();
    void shorterTextForgetsTheRest();
    void withdrawnTextLeavesNoOwner();
    void textEmptiedByHandLeavesNoOwner();
    void randomSessionsAgreeWithOneOwnerPerCharacter();
};

namespace
{
constexpr char Operators = 'o', Procedures = 'p';

/// Whose each of the first \a size characters is.
QByteArray owners(const COperatorParts &parts, int size)
{
    QByteArray result;
    for (const QChar c : parts.withLineEnds(QString(size, '<')))
        result += c == QLatin1Char('\r') ? Operators : Procedures;
    return result;
}

/// A text with its owners as the naive model has them.
struct Owned {
    QString text;
    QByteArray owners;

    Owned takeHead(int n)
    {
        const Owned head{text.left(n), owners.left(n)};
        text.remove(0, n);
        owners.remove(0, n);
        return head;
    }
    [[nodiscard]] QString withLineEnds() const
    {
        QString result = text;
        for (int i = 0; i < text.size(); ++i)
            if (owners[i] == Operators && text[i] == QLatin1Char('<'))
                result[i] = QLatin1Char('\r');
            else if (owners[i] == Operators && text[i] == QLatin1Char('>'))
                result[i] = QLatin1Char('\n');
        return result;
    }
};

/// One buffer beside its model, through random acts of the main thread and of the link.
class Session
{
public:
    explicit Session(quint32 seed) : m_random(seed) {}

    void act()
    {
        switch (m_random.bounded(8)) {
        case 0:
        case 1:
        case 2: return append();
        case 3:
        case 4:
        case 5: return take();
        case 6: return m_random.bounded(6) == 0 ? withdraw() : append();
        default: return m_held == 0 ? hold() : drop();
        }
    }
    [[nodiscard]] bool agrees() const
    {
        return buffer.text == m_model.text &&
               owners(buffer.operatorParts, m_model.text.size()) == m_model.owners &&
               buffer.operatorParts.withLineEnds(buffer.text) == m_model.withLineEnds() &&
               std::equal(m_out.begin(), m_out.end(), m_modelOut.begin(), m_modelOut.end(),
                          [](const LineChunk &chunk, const Owned &owned) {
                              return chunk.text == owned.text && chunk.withLineEnds() == owned.withLineEnds();
                          });
    }

    CTlgString buffer;
    QStringList acts;

private:
    void append()
    {
        QString text;
        for (int i = m_random.bounded(7); i > 0; --i)
            text += QLatin1Char("<>A@\r\n"[m_random.bounded(6)]);
        const bool operators = m_random.bounded(2) == 0;
        if (operators)
            buffer.mAppendOperators(text);
        else
            buffer.mAppend(text);
        m_model.text += text;
        m_model.owners += QByteArray(text.size(), operators ? Operators : Procedures);
        acts << QString("append %1 %2").arg(text.size()).arg(operators);
    }
    void take()
    {
        const int n = m_random.bounded(12);
        m_out << buffer.takeChunk(n);
        m_modelOut << m_model.takeHead(n);
        m_held = qMax(0, m_held - n);
        acts << QString("take %1").arg(n);
    }
    void hold()
    {
        m_held = qMin(m_random.bounded(12), m_model.text.size());
        Owned model = m_model;
        m_out << buffer.holdHead(m_held);
        m_modelOut << model.takeHead(m_held);
        acts << QString("hold %1").arg(m_held);
    }
    void drop()
    {
        buffer.dropHeld();
        (void)m_model.takeHead(m_held);
        m_held = 0;
        acts << QString("drop");
    }
    void withdraw()
    {
        const bool byHand = m_held == 0 && m_random.bounded(2) == 0;
        if (byHand)
            buffer.text.clear();
        else
            (void)buffer.mTake();
        m_model = Owned();
        m_held = 0;
        buffer.mAppend(QString());
        acts << QString("withdraw %1").arg(byHand);
    }

    QRandomGenerator m_random;
    Owned m_model;
    int m_held = 0;           // characters
    QVector<LineChunk> m_out; // on their way to the line, the last one last
    QVector<Owned> m_modelOut;
};
} // namespace

void TestOperatorParts::onlyTheOperatorsSignsAreLineEnds()
{
    COperatorParts parts;
    parts.add(2, 5);
    parts.add(7, 9);
    QCOMPARE(parts.withLineEnds("<><>A<><>"), QString("<>\r\nA<>\r\n"));
    QCOMPARE(parts.withLineEnds("<><"), QString("<>\r")); // a text shorter than its parts
    QCOMPARE(COperatorParts().withLineEnds("<>"), QString("<>"));
}

void TestOperatorParts::headTakesItsOwnersAlong()
{
    COperatorParts parts;
    parts.add(1, 2);
    parts.add(4, 6);
    const COperatorParts head = parts.takeHead(3);
    QCOMPARE(owners(head, 3), QByteArray("pop"));
    QCOMPARE(owners(parts, 4), QByteArray("poop"));
}

void TestOperatorParts::cutWithinAPartGivesBothAShare()
{
    COperatorParts parts;
    parts.add(1, 5);
    const COperatorParts head = parts.takeHead(3);
    QCOMPARE(owners(head, 5), QByteArray("poopp"));
    QCOMPARE(owners(parts, 3), QByteArray("oop"));
}

void TestOperatorParts::shorterTextForgetsTheRest()
{
    COperatorParts parts;
    parts.add(1, 3);
    parts.add(5, 8);
    parts.limitTo(6);
    QCOMPARE(owners(parts, 9), QByteArray("pooppoppp"));
    parts.limitTo(1);
    QCOMPARE(owners(parts, 9), QByteArray("ppppppppp"));
}

void TestOperatorParts::withdrawnTextLeavesNoOwner()
{
    CTlgString buffer;
    buffer.mAppendOperators("ТЕКСТ<>");
    QCOMPARE(buffer.mTake(), QString("ТЕКСТ<>"));
    buffer.mAppend("<>");
    QCOMPARE(buffer.takeChunk(2).withLineEnds(), QString("<>"));
}

void TestOperatorParts::textEmptiedByHandLeavesNoOwner()
{
    CTlgString buffer;
    buffer.mAppendOperators("ТЕКСТ<>");
    buffer.text.clear();
    buffer.mAppend("<>");
    QCOMPARE(buffer.takeChunk(2).withLineEnds(), QString("<>"));
}

void TestOperatorParts::randomSessionsAgreeWithOneOwnerPerCharacter()
{
    for (quint32 seed = 1; seed <= 3000; ++seed) {
        Session session(seed);
        for (int i = 0; i < 60; ++i) {
            session.act();
            QVERIFY2(session.agrees(),
                     qPrintable(QString("seed %1: %2").arg(seed).arg(session.acts.join(", "))));
        }
    }
}

QTEST_GUILESS_MAIN(TestOperatorParts)
#include "test_operator_parts.moc"
