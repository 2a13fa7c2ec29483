#pragma once

#include "tests/cuts/cut_day.h"

/// The numbered exchange with a centre: a telegram of either side has a number, and one that was cut on its
/// way comes again under that number or not at all. None is there twice.
class CentreCuts : public CutDay
{
public:
    explicit CentreCuts(const QString &role);

    void tend(bool busy) override;
    [[nodiscard]] bool isOver() const override;
    [[nodiscard]] QStringList wrongBooks() const override;
    [[nodiscard]] QString figures() const override;

private:
    void giveIncoming();
    [[nodiscard]] QStringList wrongOutgoing() const;
    [[nodiscard]] QStringList wrongIncoming() const;
    [[nodiscard]] QStringList wrongFigures() const;
    [[nodiscard]] int arrivedOutgoing() const;

    QTemporaryDir m_toSend;
    QVector<QString> m_outgoing; // names
    int m_incoming = 0;
    QElapsedTimer m_sinceFigures;
};
