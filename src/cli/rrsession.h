// SPDX-License-Identifier: GPL-3.0-or-later
// What every `kestrelctl rr` command shares: the web-service client set up from the settings and
// the family's options (--url, --user, --password-stdin, --remember, --xml), failure tracking with
// the exit statuses, and the tab-separated record lines the commands print.
#pragma once

#include "cli.h"

#include "webservice/rrclient.h"

namespace kestrel::cli {

// Exit statuses of the rr family beyond 0-2.
inline constexpr int kRRTooLong = 3; // rr import: a description longer than 60 characters
inline constexpr int kRRLoginRefused = 4;
inline constexpr int kRRPartial = 5; // rr import: some channels did not fit in the bank

// The family's options, declared once by the family head (cmd_rr.cpp).
QList<Option> rrFamilyOptions();

class RRSession {
public:
    RRSession(Env& env, const Args& args);

    // Loads the settings, applies --url and the login, reads the service description. A
    // missing user name is a usage error when `login` is set (every query but the country list
    // carries the login). False when the description could not be had (already reported).
    bool open(bool login = true);
    // The two halves of open(), for a command that checks more of its arguments against the
    // loaded profiles before it asks the service anything. A command that saves loads with
    // `writing`, holding the data-folder lock as every writing command does.
    void load(bool login = true, bool writing = false);
    bool connect();

    AppContext& ctx() { return *m_ctx; }
    RRClient& client() { return *m_client; }

    // True once anything was reported during this run: the command stops asking the service.
    bool failed() const;
    // Marks the run failed with a message of the command's own (printed to standard error).
    void fail(const QString& message);

    // Ends the command: prints the last envelope with --xml, remembers the login with
    // --remember unless it was refused, and gives the exit status (4 for a refused login, 2 for
    // any other failure, 0).
    int finish();

    // False, with the run failed and "the service knows no KIND ID" said, when the query
    // brought no record or not the one asked for (an id it does not know comes back empty),
    // unless a failure was reported already. `returned` is read after the query has run.
    bool known(bool answered, const qint32& returned, const char* kind, qint32 id);

    // True when the last reply was the service's fault for a wrong login.
    bool loginRefused() const;

private:
    Env& m_env;
    const Args& m_args;
    AppContext* m_ctx = nullptr;
    RRClient* m_client = nullptr;
    QString m_password;
    int m_reportsAtStart = 0;
    bool m_failed = false;
};

// ---- record lines ---------------------------------------------------------------------------

// The scalar fields of a record in the order the service sends them (ids first), as text:
// frequencies in megahertz as the bank files write them, blanks for tabs and line breaks. List
// fields are left out; the commands print them as lines of their own.
QStringList recordCells(const RecordType& type, const void* record);
template <class T> QStringList recordCells(const T& record) {
    return recordCells(recordType<T>(), &record);
}

// One output line: the cells joined by tabs. `lead` goes first (a kind word, parent ids).
template <class T> void printRecord(const T& record, const QStringList& lead = {}) {
    out((lead + recordCells(record)).join(QLatin1Char('\t')));
}
template <class T> void printRecords(const QList<T>& records, const QStringList& lead = {}) {
    for (const T& r : records)
        printRecord(r, lead);
}

// Categories, their subcategories and each subcategory's frequencies (getSubcatFreqs), as the
// county and agency commands print them. Stops at the first failed query.
void printCategories(RRSession& rr, const QList<TypCat>& cats);

// A positional id argument (a whole number above 0), or a usage error naming it.
qint32 idArgument(const Args& args, int index, const char* what);

} // namespace kestrel::cli
