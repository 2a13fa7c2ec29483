#pragma once

#include "app/options_table.h"

#include <QVariant>
#include <QWidget>

#include <functional>
#include <vector>

class CFontChoice;
class QBoxLayout;
class QCheckBox;
class QComboBox;
class QFormLayout;
class QGroupBox;
class QLineEdit;
class QSpinBox;
class QToolButton;

/// One page of the options: rows, each a control that is bound to a setting. The page is described by its
/// rows, and load() and apply() follow from them. Main thread.
///
/// A control bears the name of its setting. What the operator has left as it was shown is not written back,
/// so that a value from the file which the control cannot show stays in force.
class COptionPage : public QWidget
{
    Q_OBJECT

public:
    /// What a control shows, as a value.
    struct Face {
        std::function<QVariant()> shown;
        std::function<void(const QVariant &)> show;
    };
    /// Where its value is kept. \a fields are those of the settings' table, none for what is not in it.
    struct Setting {
        std::function<QVariant()> value;
        std::function<void(const QVariant &)> set;
        std::vector<SettingField> fields;
    };
    struct Binding {
        QWidget *control;
        Face face;
        Setting setting;
        QVariant loaded; ///< what the control showed at first
    };

    /// Shows the options in force; once, when all rows are there.
    void load();
    /// Writes to the options what the operator has changed.
    void apply();
    [[nodiscard]] const std::vector<Binding> &bindings() const { return m_bindings; }
    /// Whether the operator has changed what the control shows.
    [[nodiscard]] bool isChanged(const QWidget *control) const;

    bool eventFilter(QObject *object, QEvent *event) override;

protected:
    /// Why a text will not do; empty if it will.
    using Reason = std::function<QString(const QString &text)>;

    // The kinds of rows, one line each
    struct Flag {
        const char *name, *label;
        bool COptions::*field;
        const char *toolTip = "";
    };
    struct Number {
        const char *name, *label;
        int COptions::*field;
        int least, most;
        const char *toolTip = "";
    };
    struct Line {
        const char *name, *label;
        QString COptions::*field;
        int longest; ///< characters
        const char *toolTip = "";
        Reason reason = nullptr;
    };
    /// The value is the place in the list.
    struct Choice {
        const char *name, *label;
        int COptions::*field;
        const char *entries; ///< parted by "|"
        const char *toolTip = "";
    };

    COptionPage();

    /// The rows that follow stand in a box of that title.
    QGroupBox *beginGroup(const QString &title);
    /// They stand outside of boxes again.
    void endGroup();
    QCheckBox *add(const Flag &row);
    QSpinBox *add(const Number &row);
    QLineEdit *add(const Line &row);
    QComboBox *add(const Choice &row);
    CFontChoice *addFont(const char *name, const QString &label, QFont COptions::*field);
    template <class Row> void addAll(const std::vector<Row> &rows)
    {
        for (const Row &row : rows)
            add(row);
    }
    /// A list with \a entries, as the setting has no field for Choice.
    [[nodiscard]] static QComboBox *newList(const char *name, const QStringList &entries,
                                            const QString &toolTip);
    /// A list in which anything may be typed as well.
    [[nodiscard]] static QComboBox *newOpenList(const char *name, const QString &toolTip);
    /// Lists \a entries; what is chosen stays chosen, among them or not.
    static void refill(QComboBox *box, const QStringList &entries);
    /// A row of controls, of which the first one is told by the label.
    void addRow(const QString &label, std::initializer_list<QWidget *> controls);
    void addRow(QWidget *widget); ///< across the page
    /// A button by the name \a name, which calls \a press.
    QToolButton *newButton(const QString &name, const QString &label, const QString &toolTip,
                           const std::function<void()> &press);

    void bind(QWidget *control, const Face &face, const Setting &setting);
    [[nodiscard]] static Face faceOf(QCheckBox *box);
    [[nodiscard]] static Face faceOf(QGroupBox *box);
    [[nodiscard]] static Face faceOf(QSpinBox *box);
    [[nodiscard]] static Face faceOf(QLineEdit *line);
    [[nodiscard]] static Face indexOf(QComboBox *box);
    [[nodiscard]] static Face textOf(QComboBox *box);
    template <class T> [[nodiscard]] static Setting settingOf(T COptions::*field)
    {
        return {[field] { return QVariant::fromValue(Options.*field); },
                [field](const QVariant &value) { Options.*field = value.value<T>(); },
                {field}};
    }

    /// Shows beside a text field why its text will not do, now and with each change.
    void watch(QLineEdit *line, const Reason &reason);
    void watch(QComboBox *box, const Reason &reason);
    /// Looks again at the text, as what makes it good or bad may have changed.
    void lookAgain(QWidget *control);

    /// Shows \a reason beside the control, or nothing; mark() has its text red meanwhile.
    void note(const QWidget *control, const QString &reason);
    void mark(QWidget *control, const QString &reason);

    /// Brings what depends on other controls to the state that load() has shown.
    virtual void loaded() {}

private:
    void noteOutOfRange();
    void bringIntoView(const QWidget *control);

    QBoxLayout *m_rows;
    QFormLayout *m_form = nullptr; ///< takes the rows; null before the first one
    std::vector<Binding> m_bindings;
};
