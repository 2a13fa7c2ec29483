#pragma once

#include <QObject>
#include <QStringList>

#include <optional>

/// The printers of the system, listed behind the print jobs on their thread: a scheduler that does not answer
/// holds nothing up. Main thread.
class CPrinterNames : public QObject
{
    Q_OBJECT

public:
    /// The one list. It is never destroyed, as a listing may be under way at the program's end.
    static CPrinterNames &instance();

    /// Lists them anew; listed() follows.
    void refresh();
    /// As they were listed last; nothing before.
    [[nodiscard]] const std::optional<QStringList> &names() const { return m_names; }

signals:
    void listed();

private:
    CPrinterNames() = default;
    void take(const QStringList &names);

    std::optional<QStringList> m_names;
    bool m_underWay = false;
};
