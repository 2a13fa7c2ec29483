#pragma once

#include "app/options.h"
#include "tests/support/desk.h"
#include "tests/ui/dialogs/answers.h"
#include "ui/dialogs/options/colour_button.h"
#include "ui/dialogs/options/option_page.h"
#include "ui/dialogs/options/options_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QtTest>

/// The options dialog on a desk of its own, as it opens with the options that the test has set before show().
class OptionRoom
{
public:
    explicit OptionRoom(int processMode = CKS)
    {
        Options.processMode = processMode;
        Options.processModeConfigured = processMode;
    }

    COptionsDialog &open(bool fullAccess = true)
    {
        dialog = std::make_unique<COptionsDialog>(fullAccess);
        dialog->show();
        return *dialog;
    }

    template <class T> [[nodiscard]] T *find(const char *name) const
    {
        return dialog->findChild<T *>(QString::fromLatin1(name));
    }
    [[nodiscard]] QCheckBox *box(const char *name) const { return find<QCheckBox>(name); }
    [[nodiscard]] QComboBox *list(const char *name) const { return find<QComboBox>(name); }
    [[nodiscard]] QLineEdit *line(const char *name) const { return find<QLineEdit>(name); }
    [[nodiscard]] QSpinBox *number(const char *name) const { return find<QSpinBox>(name); }
    [[nodiscard]] QGroupBox *group(const char *name) const { return find<QGroupBox>(name); }
    /// The reason that is shown beside the control of that name; empty while none is.
    [[nodiscard]] QString reason(const char *name) const
    {
        const auto *label = dialog->findChild<QLabel *>(QString::fromLatin1(name) + QStringLiteral("Note"));
        return label->isHidden() ? QString() : label->text();
    }
    [[nodiscard]] static QColor textColour(const QWidget *control)
    {
        return control->palette().color(QPalette::Active, QPalette::Text);
    }
    /// The titles of the tabs that are seen.
    [[nodiscard]] QStringList tabs() const
    {
        const auto *tabs = find<QTabWidget>("tabs");
        QStringList titles;
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->isTabVisible(i))
                titles << tabs->tabText(i);
        return titles;
    }
    void showTab(const QString &title) const
    {
        auto *tabs = find<QTabWidget>("tabs");
        for (int i = 0; i < tabs->count(); ++i)
            if (tabs->tabText(i) == title)
                tabs->setCurrentIndex(i);
    }
    void apply() const { QTest::mouseClick(find<QPushButton>("apply"), Qt::LeftButton); }

    /// All controls that are bound to a setting.
    [[nodiscard]] std::vector<COptionPage::Binding> bindings() const
    {
        std::vector<COptionPage::Binding> all;
        for (const COptionPage *page : dialog->pages())
            all.insert(all.end(), page->bindings().begin(), page->bindings().end());
        return all;
    }

    const Desk desk;
    Answers answers;
    std::unique_ptr<COptionsDialog> dialog;
};
