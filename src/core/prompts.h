// SPDX-License-Identifier: GPL-3.0-or-later
// The seam through which the program asks the user: message boxes and file dialogs. The GUI shows
// real dialogs, the command line prints, tests script the answers.
#pragma once

#include <QList>
#include <QString>
#include <optional>

namespace kestrel {

enum class Icon { None, Critical, Exclamation, Information, Question };
// YesNoDefaultNo: a question before something that cannot be taken back; Enter answers No.
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, YesNoDefaultNo };
enum class Answer { Ok, Cancel, Yes, No };

struct FileDialogOptions {
    QString title;
    QString startDir;   // folder the dialog opens in
    QString pattern;    // "*.BKE"; or kinds of file to choose from, "CSV (*.csv);;CHIRP (*.csv)"
    QString defaultExt; // "BKE"
    QString presetName; // "Untitled.BKE"
    // When set, receives the kind of file the user chose (one of those in pattern).
    QString* chosenFilter = nullptr;
};

class Prompts {
public:
    virtual ~Prompts() = default;
    virtual Answer message(const QString& text, const QString& title, Icon icon,
                           Buttons buttons) = 0;
    // The chosen path, or nothing when the user cancelled.
    virtual std::optional<QString> openFile(const FileDialogOptions& options) = 0;
    virtual std::optional<QString> saveFile(const FileDialogOptions& options) = 0;
};

// Answers from a script and records every question: for tests, and for the command line, which
// takes each question as answered by its default.
class ScriptedPrompts : public Prompts {
public:
    struct Message {
        QString text;
        QString title;
        Icon icon;
        Buttons buttons;
    };

    explicit ScriptedPrompts(Answer defaultAnswer = Answer::Yes) : m_default(defaultAnswer) {}

    // Queued answers are used in order; when the queue is empty the default answer is given.
    void queueAnswer(Answer a) { m_answers.append(a); }
    // Queued file choices; an empty optional means "cancel". When empty, dialogs are cancelled.
    void queueFile(std::optional<QString> path) { m_files.append(std::move(path)); }
    // Queued kinds of file, chosen in order by dialogs that offer a choice.
    void queueFilter(const QString& filter) { m_filters.append(filter); }
    // When set, each message text is also printed to standard error.
    void setEcho(bool echo) { m_echo = echo; }

    const QList<Message>& messages() const { return m_messages; }
    const QList<FileDialogOptions>& dialogs() const { return m_dialogs; }
    void clear() {
        m_messages.clear();
        m_dialogs.clear();
    }

    Answer message(const QString& text, const QString& title, Icon icon, Buttons buttons) override;
    std::optional<QString> openFile(const FileDialogOptions& options) override;
    std::optional<QString> saveFile(const FileDialogOptions& options) override;

private:
    Answer m_default;
    bool m_echo = false;
    QList<Answer> m_answers;
    QList<std::optional<QString>> m_files;
    QList<QString> m_filters;
    QList<Message> m_messages;
    QList<FileDialogOptions> m_dialogs;
};

} // namespace kestrel
