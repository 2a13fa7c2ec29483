#pragma once

#include <QComboBox>
#include <QString>
#include <QStringList>

#include <functional>

/// A field for the number of a subscriber, with former numbers on offer. They are shown as a list and never
/// put behind what is typed. Main thread.
class CNumberCombo : public QComboBox
{
    Q_OBJECT

public:
    using Filter = std::function<QString(const QString &text)>;

    /// \a filter gives what may stay of a text that is typed or pasted, letter by letter; null keeps all.
    explicit CNumberCombo(const QStringList &numbers, Filter filter = nullptr);

    /// Adds the number to \a numbers and keeps them sorted, each once. An empty one is no number.
    void keepIn(QStringList &numbers) const;

signals:
    /// The number has changed, and is free of what the filter takes out.
    void numberChanged(const QString &number);
    /// Enter was pressed over the open list with nothing in it chosen: the number itself is meant.
    void enteredOverList();

private:
    void offerNumbersAsList();
    void clean(const QString &typed);

    Filter m_filter;
};
