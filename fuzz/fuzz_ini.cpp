// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary bytes to the INI reader, then reads, writes and re-reads keys.
#include "core/class_ini.h"

#include <cstddef>
#include <cstdint>

using kestrel::IniDocument;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    IniDocument doc = IniDocument::parse(bytes);
    const QString before = doc.ReadKey(u"ChnlInfo", u"Channel01");
    (void)doc.ReadKey(u"BankInfo", u"Revision");
    doc.WriteKey(QStringLiteral("ChnlInfo"), QStringLiteral("Channel20"), QStringLiteral("x=y"));
    doc.WriteKey(QStringLiteral("New"), QStringLiteral("Key"), QStringLiteral("v"));
    // Writing one key never changes another, and reads back what was written.
    if (doc.ReadKey(u"ChnlInfo", u"Channel20") != QStringLiteral("x=y"))
        __builtin_trap();
    if (doc.ReadKey(u"ChnlInfo", u"Channel01").compare(before) != 0 &&
        QStringLiteral("Channel01").compare(QStringLiteral("Channel20"), Qt::CaseInsensitive) != 0)
        __builtin_trap();
    const IniDocument again = IniDocument::parse(doc.serialize());
    if (again.ReadKey(u"New", u"Key") != QStringLiteral("v"))
        __builtin_trap();
    return 0;
}
