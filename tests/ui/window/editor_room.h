#pragma once

#include "tests/support/row.h"
#include "tests/ui/dialogs/answers.h"
#include "tests/ui/window/station.h"
#include "ui/form_main.h"
#include "ui/pages/editor_page.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QtTest>

/// A station at the editor's tab, with every form on offer that the procedure has. What the operator is asked
/// is answered beforehand.
class EditorRoom : public Station
{
public:
    explicit EditorRoom(int processMode = SKK, const std::function<void()> &prepare = {})
        : Station(processMode,
                  [&prepare] {
                      for (EditorInterfaceMode &mode : Options.interfaceModes)
                          mode.enabled = true;
                      if (prepare)
                          prepare();
                  }),
          page(*form->editorPage)
    {
        (void)news();
    }

    void choose(int formNumber) const { page.form->setCurrentText(Options.interfaceModes[formNumber].name); }
    void type(const QString &text) const { page.text->setPlainText(text); }
    [[nodiscard]] QString text() const { return page.text->toPlainText(); }
    static void click(QWidget *button) { QTest::mouseClick(button, Qt::LeftButton); }
    /// The questions and choices of files since the last call.
    [[nodiscard]] QStringList asked()
    {
        QStringList all;
        all.swap(answers.asked);
        return all;
    }

    CEditorPage &page;
    Answers answers;
};
