#pragma once

#include "link/nerva_config.h"

#include <QWidget>

class QComboBox;
class QGroupBox;
class QSpinBox;

/// The fields of an Ethernet adapter's configuration in their groups. Only the groups that the chosen
/// direction and kind of connection need are shown. A field is known by the name of its key.
class CNervaForm : public QWidget
{
    Q_OBJECT

public:
    explicit CNervaForm(QWidget *parent = nullptr);

    /// Shows what has been read. A value that a field cannot show leaves a choice empty and is the nearest
    /// number; an address of the network card of another length than it has is not shown.
    void showValues(const NervaValues &values);
    /// What the fields show; empty where a choice is empty, and for what has no field.
    [[nodiscard]] NervaValues values() const;
    /// That of all groups, so that the form keeps its size when some are hidden.
    [[nodiscard]] QSize sizeHint() const override;
    /// Shows the groups for what is chosen.
    void showGroups();

signals:
    void modeIndexChanged(int index); ///< the direction or the kind of connection has been chosen anew

private:
    enum Group { Device, Line, Connection, Ethernet, Http, GroupCount }; // Ethernet begins the second column
    struct Row;
    static const Row rows[];

    void addRow(const Row &row);
    [[nodiscard]] QWidget *newControl(const Row &row) const;
    [[nodiscard]] int index(NervaKey key) const;
    void showField(NervaKey key, bool visible);

    std::array<QWidget *, NervaKeyCount> m_controls = {};
    std::array<QWidget *, NervaKeyCount> m_labels = {}; ///< null where a field stands beside another
    std::array<QGroupBox *, GroupCount> m_groups = {};
    QSize m_whole;
};
