// SPDX-License-Identifier: GPL-3.0-or-later
// The local service's operations (name, request parameters, result record) and the service
// description generated from them and from the records' field tables, in the shape the public
// service publishes (RPC style, section-5 encoding, arrays as SOAP-ENC:Array restrictions).
#pragma once

#include "webservice/rrrecords.h"

#include <QByteArray>
#include <QString>
#include <span>

namespace kestrel {

// The description's target namespace; requests may use any namespace.
inline constexpr const char* kRRServiceNamespace = "http://api.radioreference.com/soap2";

struct RRParam {
    const char* name;
    const char* xsdType; // "xsd:int", "xsd:double", "xsd:string"
};

struct RROperation {
    const char* name;
    std::span<const RRParam> params; // in request order, "authInfo" not included
    const RecordType* result;
    bool list;       // an array of result records, else one record
    bool needsLogin; // the request carries "authInfo"
    const char* documentation;
};

std::span<const RROperation> RROperations();
const RROperation* FindRROperation(QStringView name);

// The name of the description's array type of a record ("FreqArray").
QString RRArrayTypeName(const RecordType& type);

// The service description with `location` as the service address. `classic` describes the
// first-generation service, whose site records name their frequency list "siteFeqs".
QByteArray RRServiceDescription(const QString& location, bool classic);

} // namespace kestrel
