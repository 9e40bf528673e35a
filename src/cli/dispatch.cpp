// SPDX-License-Identifier: GPL-3.0-or-later
#include "dispatch.h"

#include <QCommandLineParser>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace kestrel::cli {

namespace {

const QString kProgram = u"kestrelctl"_s;

// Options every command accepts besides its own.
const QList<Option>& globalOptions() {
    static const QList<Option> list{
        {"data-dir", "DIR", "The data folder to use instead of the usual one"},
        {"help", nullptr, "Print this help and exit"},
    };
    return list;
}

QString fromLatin(const char* s) {
    return s ? QString::fromLatin1(s) : QString();
}

QString commandPath(const Command& c) {
    return c.sub ? fromLatin(c.name) + u' ' + fromLatin(c.sub) : fromLatin(c.name);
}

bool isFamily(const QString& name) {
    return std::any_of(commands().begin(), commands().end(), [&](const Command& c) {
        return c.sub && name == QLatin1StringView(c.name);
    });
}

// The row a top-level command, a family head or a family member is declared in.
const Command* find(const QString& name, const QString& sub = {}) {
    for (const Command& c : commands())
        if (name == QLatin1StringView(c.name) &&
            (sub.isEmpty() ? !c.sub : c.sub && sub == QLatin1StringView(c.sub)))
            return &c;
    return nullptr;
}

QList<const Command*> members(const QString& family) {
    QList<const Command*> list;
    for (const Command& c : commands())
        if (c.sub && family == QLatin1StringView(c.name))
            list.append(&c);
    return list;
}

// Top-level command names and families, sorted, each once.
QStringList topNames() {
    QStringList names;
    for (const Command& c : commands())
        if (!names.contains(fromLatin(c.name)))
            names.append(fromLatin(c.name));
    names.append(u"help"_s);
    names.sort();
    return names;
}

// Everything a command accepts: the family head's options, its own, then the global ones.
QList<Option> allOptions(const Command& c) {
    QList<Option> list;
    if (c.sub)
        if (const Command* head = find(fromLatin(c.name)))
            list += head->options;
    list += c.options;
    list += globalOptions();
    return list;
}

QString spelling(const Option& o) {
    QString s = optionSpelling(fromLatin(o.name));
    if (o.valueName)
        s += u' ' + fromLatin(o.valueName);
    return s;
}

// Two columns, the first as wide as its widest entry.
QString table(const QList<QPair<QString, QString>>& rows) {
    qsizetype width = 0;
    for (const auto& [left, right] : rows)
        width = std::max(width, left.size());
    QString text;
    for (const auto& [left, right] : rows)
        text += u"  "_s + left.leftJustified(width + 2) + right + u'\n';
    return text;
}

QString optionTable(const QList<Option>& options) {
    QList<QPair<QString, QString>> rows;
    for (const Option& o : options)
        rows.append({QString::fromLatin1(o.name) == u"help"_s ? u"-h, --help"_s : spelling(o),
                     fromLatin(o.description)});
    return table(rows);
}

QString summaryOf(const QString& top) {
    if (const Command* c = find(top); c && c->summary)
        return fromLatin(c->summary);
    QStringList subs;
    for (const Command* m : members(top))
        subs.append(fromLatin(m->sub));
    return u"Sub-commands: "_s + subs.join(u", "_s);
}

const QList<QPair<QString, QString>>& commonExits() {
    static const QList<QPair<QString, QString>> rows{
        {u"0"_s, u"success"_s},
        {u"1"_s, u"usage error: a wrong command, option or argument; no file was touched"_s},
        {u"2"_s, u"failure: a file could not be written, or an error was reported"_s},
    };
    return rows;
}

QString exitTable(const QList<ExitStatus>& extra) {
    QList<QPair<QString, QString>> rows = commonExits();
    for (const ExitStatus& e : extra)
        rows.append({QString::number(e.code), fromLatin(e.meaning)});
    return table(rows);
}

QString programHelp() {
    QString text = u"usage: kestrelctl [--data-dir DIR] COMMAND [SUB-COMMAND] [options] "
                   "[ARGUMENTS]\n"
                   "       kestrelctl help [COMMAND [SUB-COMMAND]]\n"
                   "       kestrelctl --help | --version\n"
                   "Prepares the scanner's memory from the command line, in the same files as "
                   "Kestrel Manager.\n\nCommands:\n"_s;
    QList<QPair<QString, QString>> rows;
    for (const QString& name : topNames())
        rows.append({name, name == u"help"_s ? u"Print the help of a command"_s : summaryOf(name)});
    text += table(rows);
    text += u"\nGlobal options:\n"_s;
    text += optionTable(globalOptions() + QList<Option>{{"version", nullptr,
                                                         "Print the program's version and exit"}});
    // Statuses beyond 0-2 belong to single commands; each is listed with its command.
    QList<QPair<QString, QString>> exits = commonExits();
    for (const Command& c : commands())
        for (const ExitStatus& e : c.exits)
            exits.append(
                {QString::number(e.code), commandPath(c) + u": "_s + fromLatin(e.meaning)});
    text += u"\nExit status:\n"_s + table(exits);
    text += u"\nRun 'kestrelctl help COMMAND' or 'kestrelctl COMMAND --help' for a command's "
            "options.\n"_s;
    return text;
}

QString usageLine(const Command& c) {
    QString line = u"usage: kestrelctl "_s + commandPath(c) + u" [options]"_s;
    for (const Argument& a : c.arguments)
        line += u' ' + fromLatin(a.name);
    return line;
}

QString commandHelp(const Command& c) {
    QString text = usageLine(c) + u'\n';
    if (c.summary)
        text += fromLatin(c.summary) + u'\n';
    if (!c.arguments.isEmpty()) {
        text += u"\nArguments:\n"_s;
        QList<QPair<QString, QString>> rows;
        for (const Argument& a : c.arguments)
            rows.append({fromLatin(a.name), fromLatin(a.description)});
        text += table(rows);
    }
    text += u"\nOptions:\n"_s + optionTable(allOptions(c));
    QList<ExitStatus> exits = c.exits;
    if (const Command* head = c.sub ? find(fromLatin(c.name)) : nullptr)
        exits = head->exits + exits;
    text += u"\nExit status:\n"_s + exitTable(exits);
    return text;
}

QString familyHelp(const QString& family) {
    QString text = u"usage: kestrelctl "_s + family + u" SUB-COMMAND [options] [ARGUMENTS]\n"_s +
                   summaryOf(family) + u"\n\nSub-commands:\n"_s;
    QList<QPair<QString, QString>> rows;
    for (const Command* m : members(family))
        rows.append({fromLatin(m->sub), fromLatin(m->summary)});
    text += table(rows);
    QList<Option> options;
    if (const Command* head = find(family))
        options = head->options;
    text += u"\nOptions of every sub-command:\n"_s + optionTable(options + globalOptions());
    text +=
        u"\nRun 'kestrelctl help "_s + family + u" SUB-COMMAND' for a sub-command's options.\n"_s;
    return text;
}

// Manual pages in roff, from the same table as the help. Text is escaped so that no line of it
// can read as a request, and hyphens in option names stay hyphens.
QString roff(const QString& text) {
    QString out = text;
    out.replace(u'\\', u"\\e"_s).replace(u'-', u"\\-"_s);
    if (out.startsWith(u'.') || out.startsWith(u'\''))
        out.prepend(u"\\&"_s);
    return out;
}

QString manHeader(const QString& name, const QString& summary) {
    return u".TH "_s + name.toUpper().replace(u'-', u"\\-"_s) + u" 1 \"\" \"Kestrel Manager "_s +
           QStringLiteral(KESTREL_VERSION) + u"\" \"User Commands\"\n.SH NAME\n"_s + roff(name) +
           u" \\- "_s + roff(summary) + u'\n';
}

QString manItem(const QString& term, const QString& text) {
    return u".TP\n.B "_s + roff(term) + u'\n' + roff(text) + u'\n';
}

QString manOptions(const QList<Option>& options) {
    QString text;
    for (const Option& o : options)
        text += manItem(QString::fromLatin1(o.name) == u"help"_s ? u"-h, --help"_s : spelling(o),
                        fromLatin(o.description));
    return text;
}

QString manFiles() {
    return u".SH FILES\n"_s +
           manItem(u"~/.local/share/Kestrel/KestrelManager/"_s,
                   u"The data folder: Profiles.ini, the settings files Main.ini and one per "
                   "profile, the Banks folder with the bank (.BKE) and search-limit (.SKE) files, "
                   "and Error.log. --data-dir DIR uses DIR instead. Both programs share it; one "
                   "writes at a time."_s) +
           manItem(u"~/.local/share/Kestrel/KestrelManager/Main.ini"_s,
                   u"The settings: serial ports, the web database's address, window places."_s);
}

QString kestrelctlPage() {
    QString text = manHeader(kProgram, u"prepare a radio scanner's memory from the command line"_s);
    text += u".SH SYNOPSIS\n.B kestrelctl\n"_s +
            roff(u"[--data-dir DIR] COMMAND [SUB-COMMAND] [options] [ARGUMENTS]"_s) +
            u"\n.br\n.B kestrelctl\n"_s + roff(u"help [COMMAND [SUB-COMMAND]]"_s) +
            u"\n.br\n.B kestrelctl\n"_s + roff(u"--help | --version"_s) + u'\n';
    text += u".SH DESCRIPTION\n"_s +
            roff(u"Prepares the scanner's memory from the command line, in the same files as "
                 "Kestrel Manager: profiles, banks of channels, search ranges, the upload over "
                 "the serial cable and the web database of frequencies."_s) +
            u'\n';
    text += u".SH GLOBAL OPTIONS\n"_s +
            manOptions(globalOptions() +
                       QList<Option>{{"version", nullptr, "Print the program's version and exit"}});
    text += u".SH COMMANDS\n"_s;
    for (const QString& name : topNames()) {
        if (name == u"help"_s) {
            text += u".SS \"kestrelctl help [COMMAND [SUB\\-COMMAND]]\"\n"_s +
                    roff(u"Print the help of a command."_s) + u'\n';
            continue;
        }
        QList<const Command*> rows;
        if (const Command* c = find(name))
            rows.append(c);
        rows += members(name);
        for (const Command* c : rows) {
            QString usage = u"kestrelctl "_s + commandPath(*c);
            if (!c->run) {
                text += u".SS \""_s + roff(usage + u" SUB-COMMAND"_s) + u"\"\n"_s +
                        roff(fromLatin(c->summary)) + u'\n';
                if (!c->options.isEmpty())
                    text += u".PP\nOptions of every sub-command:\n"_s + manOptions(c->options);
                for (const ExitStatus& e : c->exits)
                    text +=
                        manItem(u"Exit status "_s + QString::number(e.code), fromLatin(e.meaning));
                continue;
            }
            usage += u" [options]"_s;
            for (const Argument& a : c->arguments)
                usage += u' ' + fromLatin(a.name);
            text += u".SS \""_s + roff(usage) + u"\"\n"_s + roff(fromLatin(c->summary)) + u'\n';
            for (const Argument& a : c->arguments)
                text += manItem(fromLatin(a.name), fromLatin(a.description));
            text += manOptions(c->options);
            for (const ExitStatus& e : c->exits)
                text += manItem(u"Exit status "_s + QString::number(e.code), fromLatin(e.meaning));
        }
    }
    text += u".SH EXIT STATUS\n"_s;
    for (const auto& [code, meaning] : commonExits())
        text += manItem(code, meaning);
    text += roff(u"Statuses above 2 belong to single commands and are listed with them."_s) + u'\n';
    text += u".SH EXAMPLES\n"_s;
    const QList<QPair<QString, QString>> examples{
        {u"kestrelctl --help"_s, u"List the commands."_s},
        {u"kestrelctl help rr import"_s, u"Show the options of one sub-command."_s},
        {u"kestrelctl rr-serve"_s, u"Start the local copy of the web database."_s},
        {u"echo demo | kestrelctl rr --url http://127.0.0.1:9000/soap2/ --user demo "
         "--password-stdin countries"_s,
         u"List the countries the local web database knows."_s},
    };
    for (const auto& [command, meaning] : examples)
        text +=
            u".PP\n"_s + roff(meaning) + u"\n.PP\n.RS\n.nf\n"_s + roff(command) + u"\n.fi\n.RE\n"_s;
    text += manFiles();
    text += u".SH SEE ALSO\n.BR kestrel\\-manager (1)\n"_s;
    return text;
}

QString windowPage() {
    QString text = manHeader(u"kestrel-manager"_s, u"prepare a radio scanner's memory"_s);
    text += u".SH SYNOPSIS\n.B kestrel\\-manager\n"_s +
            roff(u"[--data-dir DIR] | --help | --version"_s) + u'\n';
    text += u".SH DESCRIPTION\n"_s +
            roff(u"The desktop window of Kestrel Manager: 10 banks of 20 channels and 10 search "
                 "ranges per profile, ten profiles, the upload to the scanner over a serial "
                 "cable and the import from the web database of frequencies. kestrelctl does "
                 "the same from the command line."_s) +
            u'\n';
    text += u".SH OPTIONS\n"_s +
            manOptions({{"help", nullptr, "Print the usage and exit, without opening a window"},
                        {"version", nullptr, "Print the version and exit, without a display"},
                        {"data-dir", "DIR", "The data folder to use instead of the usual one"}});
    text += u".SH EXIT STATUS\n"_s + manItem(u"0"_s, u"The window was closed."_s) +
            manItem(u"1"_s, u"A wrong option or argument."_s) +
            manItem(u"2"_s, u"The data folder is in use by another writer."_s);
    text +=
        u".SH EXAMPLES\n.PP\n.RS\n.nf\nkestrel\\-manager \\-\\-data\\-dir ~/scanner\n.fi\n.RE\n"_s;
    text += manFiles();
    text += u".SH SEE ALSO\n.BR kestrelctl (1)\n"_s;
    return text;
}

QString manPage(const QString& program) {
    if (program == kProgram)
        return kestrelctlPage();
    if (program == u"kestrel-manager"_s)
        return windowPage();
    return {};
}

// " (did you mean 'x'?)" for the closest candidate within two edits, or a unique candidate
// that starts with what was typed; empty otherwise.
QString suggestion(const QString& typed, const QStringList& candidates) {
    QString best;
    int bestDistance = 3;
    for (const QString& c : candidates) {
        const int d = editDistance(typed, c);
        if (d < bestDistance && d < c.size()) {
            best = c;
            bestDistance = d;
        }
    }
    if (best.isEmpty() && typed.size() >= 2) {
        QStringList starting;
        for (const QString& c : candidates)
            if (c.startsWith(typed))
                starting.append(c);
        if (starting.size() == 1)
            best = starting.first();
    }
    return best.isEmpty() ? QString() : u" (did you mean '"_s + best + u"'?)"_s;
}

Invocation print(QString text) {
    Invocation inv;
    inv.action = Invocation::Print;
    inv.text = std::move(text);
    return inv;
}

Invocation fail(QString text) {
    Invocation inv;
    inv.action = Invocation::Fail;
    inv.text = std::move(text);
    return inv;
}

Invocation unknownCommand(const QString& typed, const QStringList& candidates,
                          const QString& within) {
    const QString where = within.isEmpty() ? kProgram : kProgram + u' ' + within;
    return fail(where + u": unknown command '"_s + typed + u'\'' + suggestion(typed, candidates) +
                u"\nRun '"_s + where + u" --help' for the list of commands.\n"_s);
}

QStringList memberNames(const QString& family) {
    QStringList names;
    for (const Command* m : members(family))
        names.append(fromLatin(m->sub));
    return names;
}

bool asksForHelp(const QStringList& words) {
    for (const QString& w : words) {
        if (w == u"--"_s)
            return false;
        if (w == u"--help"_s || w == u"-h"_s || w == u"-help"_s)
            return true;
    }
    return false;
}

// Help for "help [COMMAND [SUB-COMMAND]]" and for "COMMAND ... --help".
Invocation helpFor(const QStringList& path) {
    if (path.isEmpty())
        return print(programHelp());
    const QString& top = path.first();
    if (isFamily(top)) {
        if (path.size() < 2 || path[1].startsWith(u'-'))
            return print(familyHelp(top));
        if (const Command* c = find(top, path[1]))
            return print(commandHelp(*c));
        return unknownCommand(path[1], memberNames(top), top);
    }
    if (const Command* c = find(top); c && c->run)
        return print(commandHelp(*c));
    return unknownCommand(top, topNames(), {});
}

Invocation parseCommand(const Command& c, const QStringList& words, QString dataDir) {
    if (asksForHelp(words))
        return print(commandHelp(c));
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    QStringList declared;
    QStringList spellings;
    for (const Option& o : allOptions(c)) {
        const QString name = fromLatin(o.name);
        declared.append(name);
        spellings.append(optionSpelling(name));
        parser.addOption(o.valueName ? QCommandLineOption(name, {}, fromLatin(o.valueName))
                                     : QCommandLineOption(name));
    }
    // A negative number ("-70.11") is an argument, not an option: it stands in the parsed words
    // as a marker the parser leaves alone, and is put back among the arguments afterwards.
    static const QRegularExpression negative(u"^-(\\d+\\.?\\d*|\\.\\d+)$"_s);
    const QString marker = u"\x01"_s;
    QStringList parsed;
    for (const QString& w : words)
        parsed.append(negative.match(w).hasMatch() ? marker + w : w);
    if (!parser.parse(QStringList{kProgram} + parsed)) {
        QString message = parser.errorText();
        if (!parser.unknownOptionNames().isEmpty()) {
            const QString typed = optionSpelling(parser.unknownOptionNames().first());
            message = u"unknown option "_s + typed + suggestion(typed, spellings);
        }
        return fail(usageFailure(c, message));
    }
    QStringList positional = parser.positionalArguments();
    for (QString& p : positional)
        if (p.startsWith(marker))
            p.remove(0, marker.size());
    int required = 0;
    for (const Argument& a : c.arguments)
        required += a.name[0] == '[' ? 0 : 1;
    if (positional.size() > c.arguments.size()) {
        const QString extra = positional.value(c.arguments.size());
        return fail(usageFailure(c, u"unexpected argument '"_s + extra + u'\''));
    }
    if (positional.size() < required)
        return fail(
            usageFailure(c, u"missing "_s + fromLatin(c.arguments[positional.size()].name)));
    QStringList flags;
    QList<QPair<QString, QString>> values;
    for (const Option& o : allOptions(c)) {
        const QString name = fromLatin(o.name);
        if (!parser.isSet(name))
            continue;
        if (o.valueName)
            for (const QString& v : parser.values(name))
                values.append({name, v.startsWith(marker) ? v.mid(marker.size()) : v});
        else
            flags.append(name);
    }
    Invocation inv;
    inv.action = Invocation::Run;
    inv.command = &c;
    inv.dataDir = parser.isSet(u"data-dir"_s) ? parser.value(u"data-dir"_s) : dataDir;
    inv.args.emplace(declared, flags, values, positional);
    return inv;
}

// The words a shell may offer after `typed` (the words before the cursor), one a line. A line
// ":NAME" asks for file names (FILE, PATH) or folders (DIR) instead of or besides the words.
QString completionWords(const QStringList& typed) {
    QStringList path; // command and sub-command found so far
    QString valueFor; // the value name of the option the last word left without its value
    for (const QString& w : typed) {
        if (!valueFor.isEmpty()) {
            valueFor.clear();
            continue;
        }
        if (w.startsWith(u'-')) {
            const Command* c = path.isEmpty() ? nullptr : find(path.value(0), path.value(1));
            const QList<Option> options = c ? allOptions(*c) : globalOptions();
            for (const Option& o : options)
                if (o.valueName && !w.contains(u'=') && w == optionSpelling(fromLatin(o.name)))
                    valueFor = fromLatin(o.valueName);
            continue;
        }
        if (path.isEmpty() || (path.size() == 1 && isFamily(path.first())))
            path.append(w);
    }
    if (!valueFor.isEmpty())
        return u':' + valueFor + u'\n';
    QStringList words;
    if (path.isEmpty()) {
        words = topNames();
        for (const Option& o : globalOptions())
            words.append(optionSpelling(fromLatin(o.name)));
        words.append(u"--version"_s);
    } else if (path.first() == u"help"_s) {
        words = path.size() == 1 ? topNames() : memberNames(path[1]);
    } else if (path.size() == 1 && isFamily(path.first())) {
        words = memberNames(path.first());
    } else if (const Command* c = find(path.value(0), path.value(1)); c && c->run) {
        for (const Option& o : allOptions(*c))
            words.append(optionSpelling(fromLatin(o.name)));
        for (const Argument& a : c->arguments)
            if (QLatin1StringView(a.name).contains("FILE"_L1))
                words.append(u":FILE"_s);
    }
    return words.isEmpty() ? QString() : words.join(u'\n') + u'\n';
}

// Where the sub-command of `family` stands in `words` when options come first: the first word
// naming a member such that every word before it is one of that member's options or an
// option's value; -1 when there is none.
qsizetype subCommandAt(const QString& family, const QStringList& words) {
    for (qsizetype at = 0; at < words.size(); ++at) {
        const Command* c = find(family, words[at]);
        if (!c)
            continue;
        const QList<Option> options = allOptions(*c);
        bool valueNext = false;
        bool fits = true;
        for (qsizetype i = 0; i < at && fits; ++i) {
            if (valueNext) {
                valueNext = false;
                continue;
            }
            const QString& w = words[i];
            fits = w.startsWith(u'-');
            for (const Option& o : options)
                if (o.valueName && !w.contains(u'=') && w == optionSpelling(fromLatin(o.name)))
                    valueNext = true;
        }
        if (fits && !valueNext)
            return at;
    }
    return -1;
}

} // namespace

int editDistance(const QString& a, const QString& b) {
    QList<int> row(b.size() + 1);
    for (qsizetype j = 0; j <= b.size(); ++j)
        row[j] = int(j);
    for (qsizetype i = 1; i <= a.size(); ++i) {
        int diagonal = row[0];
        row[0] = int(i);
        for (qsizetype j = 1; j <= b.size(); ++j) {
            const int above = row[j];
            row[j] =
                std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

QString usageFailure(const Command& c, const QString& message) {
    return kProgram + u' ' + commandPath(c) + u": "_s + message + u'\n' + usageLine(c) +
           u"\nRun 'kestrelctl "_s + commandPath(c) + u" --help' for its options.\n"_s;
}

Invocation resolve(const QStringList& words) {
    // Global options stand before the command; everything from the command on is its own.
    QCommandLineParser parser;
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    const QCommandLineOption dataDir(u"data-dir"_s, {}, u"DIR"_s);
    const QCommandLineOption help(QStringList{u"help"_s, u"h"_s});
    const QCommandLineOption version(u"version"_s);
    const QCommandLineOption completion(u"completion-words"_s);
    const QCommandLineOption man(u"man"_s, {}, u"PROGRAM"_s); // the build writes the manual pages
    parser.addOptions({dataDir, help, version, completion, man});
    if (!parser.parse(QStringList{kProgram} + words)) {
        QString message = parser.errorText();
        if (!parser.unknownOptionNames().isEmpty()) {
            const QString typed = optionSpelling(parser.unknownOptionNames().first());
            message = u"unknown option "_s + typed +
                      suggestion(typed, {u"--data-dir"_s, u"--help"_s, u"--version"_s});
        }
        return fail(kProgram + u": "_s + message + u"\nRun 'kestrelctl --help' for its usage.\n"_s);
    }
    QStringList rest = parser.positionalArguments();
    if (parser.isSet(completion))
        return print(completionWords(rest));
    if (parser.isSet(man)) {
        const QString page = manPage(parser.value(man));
        return page.isEmpty()
                   ? fail(kProgram + u": no manual page for "_s + parser.value(man) + u'\n')
                   : print(page);
    }
    if (parser.isSet(version))
        return print(kProgram + u' ' + QStringLiteral(KESTREL_VERSION) + u'\n');
    if (parser.isSet(help))
        return print(programHelp());
    if (rest.isEmpty())
        return fail(programHelp());

    const QString name = rest.takeFirst();
    if (name == u"help"_s)
        return helpFor(rest);
    if (isFamily(name)) {
        if (rest.isEmpty())
            return fail(kProgram + u' ' + name + u": give a sub-command: "_s +
                        memberNames(name).join(u", "_s) + u"\nRun 'kestrelctl "_s + name +
                        u" --help' for the list.\n"_s);
        const QString sub = rest.takeFirst();
        if (sub == u"--help"_s || sub == u"-h"_s)
            return print(familyHelp(name));
        if (sub.startsWith(u'-')) {
            // Options may stand before the sub-command: take the first word that names one and
            // that is not the value of an option before it.
            rest.prepend(sub);
            if (const qsizetype at = subCommandAt(name, rest); at >= 0) {
                const QString found = rest.takeAt(at);
                return parseCommand(*find(name, found), rest, parser.value(dataDir));
            }
            return fail(kProgram + u' ' + name + u": the sub-command comes before "_s + sub +
                        u": "_s + memberNames(name).join(u", "_s) + u"\nRun 'kestrelctl "_s + name +
                        u" --help' for the list.\n"_s);
        }
        if (const Command* c = find(name, sub))
            return parseCommand(*c, rest, parser.value(dataDir));
        return unknownCommand(sub, memberNames(name), name);
    }
    if (const Command* c = find(name); c && c->run)
        return parseCommand(*c, rest, parser.value(dataDir));
    return unknownCommand(name, topNames(), {});
}

} // namespace kestrel::cli
