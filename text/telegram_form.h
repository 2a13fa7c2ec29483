#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include <array>

/// The forms in which a telegram is written: which fields each has, how the fields become the text that goes
/// to the line, and how a text that was kept as a template becomes fields again. Any thread.

/// The forms, in the order of Options.interfaceModes.
enum TelegramForm {
    MessageForm,
    ShortForm,         ///< category and text
    FullForm,          ///< of a telegram inside the country
    InternationalForm, ///< with the till and the far office
    Rex400Form,
    TelegramFormCount
};

/// The rows of a form beside its text, from top to bottom.
enum FormRow {
    CategoryRow,
    HeaderRow,
    MarksRow,
    AddressRow,
    KassaRow,
    ToRow,
    FromRow,
    SignatureRow,
    FormRowCount
};

/// Which rows are shown.
using FormRows = std::array<bool, FormRowCount>;

/// The rows of \a form; none for a number that is no form.
[[nodiscard]] FormRows rowsOfForm(int form);

/// What the operator has written, each as it stands in its field.
struct TelegramFields {
    QString category;
    bool secondSeries = false; ///< "02" is chosen, not "01"
    QString index;
    QString header, headerWords, headerTime;
    QString marks;
    QString address;
    QString kassa;
    QString to;
    QString from, fromWords, fromTime;
    QString text; ///< with the line ends of the line
    QString signature;
};

/// What the placeholders of a template stand for.
struct TelegramMoment {
    int number = 0; ///< of the telegram, for "["
    QDateTime time;
};

/// The telegram as it goes on the line: head and body of the rows that \a shown names, placeholders
/// replaced, without what the code cannot carry. \a form decides whether the text gets an end.
[[nodiscard]] QString composeTelegram(const TelegramFields &fields, int form, const FormRows &shown,
                                      const TelegramMoment &moment);
/// The same fields as a template: with the separators of a telegram, each placeholder as it stands.
[[nodiscard]] QString composeTemplate(const TelegramFields &fields, const FormRows &shown);
/// Takes a template apart into the fields of the rows that \a shown names; all others stay empty. A field
/// that would span lines ends the taking apart: the rest is text.
[[nodiscard]] TelegramFields parseTemplate(const QString &text, const FormRows &shown);

/// The words to be billed of the marks, address, text and signature that \a shown names.
[[nodiscard]] int billedWords(const TelegramFields &fields, const FormRows &shown);
/// What stands behind " Слов" of an international telegram: tens of characters, "/", words.
[[nodiscard]] QString internationalWords(const TelegramFields &fields, const FormRows &shown);
