// SPDX-License-Identifier: GPL-3.0-or-later
// Feeds arbitrary bytes to the service-description parser and to the reply reader, then maps
// whatever was read into records and writes it out again.
#include "webservice/rrdescription.h"
#include "webservice/rrrecords.h"
#include "webservice/soapenvelope.h"

#include <cstddef>
#include <cstdint>

using namespace kestrel;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    SoapDescription description;
    QDomDocument doc;
    ParseDescription(soap::DecodeXmlText(bytes), description, doc);

    soap::SoapMessage message;
    if (!soap::ReadEnvelope(bytes, message))
        return 0;
    for (const soap::SoapValue& v : message.params) {
        QList<TypFreq> freqs;
        ReadRecordList(v, freqs);
        TypTrsDetails details;
        ReadRecord(v, details);
        QList<TypSite> sites;
        ReadRecordList(v, sites);
        // What was read can always be written and read back.
        message.params = {WriteRecordList(freqs, QStringLiteral("return")),
                          WriteRecord(details, QStringLiteral("d")),
                          WriteRecordList(sites, QStringLiteral("s"))};
        soap::SoapMessage again;
        if (!soap::ReadEnvelope(soap::WriteEnvelope(message), again))
            __builtin_trap();
        break;
    }
    return 0;
}
