#pragma once

#include "ui/dialogs/options/option_page.h"

/// The page "Звуки": for each event whether it sounds, and what is played.
class CSoundOptions : public COptionPage
{
    Q_OBJECT

public:
    CSoundOptions();

    /// Whether the sound that a button of this page has begun still plays.
    [[nodiscard]] bool plays() const;
    /// Has the buttons offer to play again.
    void restoreButtons();

signals:
    void began(); ///< a sound

public slots:
    /// Marks a field whose file is not there.
    void checkLineEditFileNameExists(QLineEdit *file);

private:
    struct Row {
        QComboBox *type;
        QLineEdit *file;
        QToolButton *play;
    };

    [[nodiscard]] static QLineEdit *newFile(const QString &name);
    void choose(QLineEdit *file);
    void playOrStop(const Row &row);

    std::vector<Row> m_sounds;
    QString m_playing; ///< the file that a button has begun
};
