#include "ui/dialogs/options/sound_options.h"

#include "text/utils.h"
#include "ui/dialogs/options/option_faults.h"
#include "ui/dialogs/pick_file.h"
#include "ui/sound.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QToolButton>

namespace
{
struct SoundRow {
    const char *name; ///< of the settings, without "Type" and "File"
    const char *label;
    int COptions::*type;
    QString COptions::*file;
};

const SoundRow soundRows[] = {
    {"soundRTlg", "Ракета", &COptions::soundRTlgType, &COptions::soundRTlgFile},
    {"soundCTlg", "Категорийные", &COptions::soundCTlgType, &COptions::soundCTlgFile},
    {"soundOTlg", "Остальные телеграммы", &COptions::soundOTlgType, &COptions::soundOTlgFile},
    {"soundDisconnect", "Потеря связи", &COptions::soundDisconnectType, &COptions::soundDisconnectFile},
    {"soundSKKInConnect", "Входящее соединение СКК", &COptions::soundSKKInConnectType,
     &COptions::soundSKKInConnectFile},
    {"soundSKKInConnectMessageSave", "Сохранение входящего соединения СКК",
     &COptions::soundSKKInConnectMessageSaveType, &COptions::soundSKKInConnectMessageSaveFile},
};

const char *const Types = "Без звука|Проиграть файл|Проигрывать файл по циклу";
const QString PlayLabel = QStringLiteral("Слушать"), StopLabel = QStringLiteral("Стоп");
constexpr int LongestPath = 1024;
} // namespace

CSoundOptions::CSoundOptions()
{
    for (const SoundRow &row : soundRows) {
        beginGroup(QString::fromUtf8(row.label));
        const QByteArray typeName = QByteArray(row.name) + "Type";
        QComboBox *type = add(Choice{typeName.constData(), "Звук", row.type, Types});
        const QString name = QString::fromLatin1(row.name);
        QLineEdit *file = newFile(name + QStringLiteral("File"));
        const size_t place = m_sounds.size();
        QToolButton *browse = newButton(name + QStringLiteral("Browse"), QStringLiteral("..."),
                                        QStringLiteral("Выбрать файл"), [this, file] { choose(file); });
        QToolButton *play = newButton(name + QStringLiteral("Play"), PlayLabel, QString(),
                                      [this, place] { playOrStop(m_sounds[place]); });
        addRow(QStringLiteral("Файл"), {file, browse, play});
        bind(file, faceOf(file), settingOf(row.file));
        connect(file, &QLineEdit::textChanged, this, [this, file] { checkLineEditFileNameExists(file); });
        m_sounds.push_back({type, file, play});
    }
}

QLineEdit *CSoundOptions::newFile(const QString &name)
{
    auto *file = new QLineEdit;
    file->setObjectName(name);
    file->setMaxLength(LongestPath);
    file->setToolTip(QStringLiteral("Путь от папки данных"));
    return file;
}

void CSoundOptions::checkLineEditFileNameExists(QLineEdit *file)
{
    mark(file, fileFault(file->text()));
}

void CSoundOptions::choose(QLineEdit *file)
{
    const QString path =
        pickFileToOpen(this, QStringLiteral("Выберите звуковой файл"), QStringLiteral("*.wav"));
    if (!path.isEmpty())
        file->setText(CUtils::checkAndMakeRelativePath(path));
}

bool CSoundOptions::plays() const
{
    return !m_playing.isEmpty() && sound.playingFileName() == m_playing;
}

// A sound that is off can be listened to as well.
void CSoundOptions::playOrStop(const Row &row)
{
    const bool stops = row.play->text() == StopLabel;
    sound.stop();
    restoreButtons();
    if (stops)
        return;
    const int type = row.type->currentIndex();
    sound.play(row.file->text(), type == CSound::Loop ? CSound::Loop : CSound::Once);
    m_playing = sound.playingFileName();
    if (m_playing.isEmpty()) {
        mark(row.file, QStringLiteral("Этот файл не проигрывается"));
        return;
    }
    row.play->setText(StopLabel);
    emit began();
}

void CSoundOptions::restoreButtons()
{
    m_playing.clear();
    for (const Row &row : m_sounds)
        row.play->setText(PlayLabel);
}
