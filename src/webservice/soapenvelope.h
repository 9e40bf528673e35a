// SPDX-License-Identifier: GPL-3.0-or-later
// SOAP 1.1 envelopes (RPC style, section-5 encoding) as plain values: a small value model
// (nil, typed scalar, struct, array), and pure functions that write and read requests, replies
// and faults. Both the web-service client and the local service use them.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace kestrel::soap {

inline constexpr const char* kEnvelopeNS = "http://schemas.xmlsoap.org/soap/envelope/";
inline constexpr const char* kEncodingNS = "http://schemas.xmlsoap.org/soap/encoding/";
inline constexpr const char* kXsdNS = "http://www.w3.org/2001/XMLSchema";
inline constexpr const char* kXsiNS = "http://www.w3.org/2001/XMLSchema-instance";

// Replies above this size are refused unread.
inline constexpr qint64 kMaxEnvelopeBytes = 16 * 1024 * 1024;

// One value of a message: a parameter, a struct field or an array item. Scalars keep their text
// as it travels; `type` is the xsi:type as written ("xsd:int", "xsd:string", "tns:Tag", ...),
// empty when the sender gave none.
class SoapValue {
public:
    enum class Kind { Nil, Scalar, Struct, Array };

    SoapValue() = default;
    static SoapValue nil(const QString& name);
    static SoapValue scalar(const QString& name, const QString& type, const QString& text);
    static SoapValue integer(const QString& name, qint64 value);    // xsd:int
    static SoapValue dbl(const QString& name, double value);        // xsd:double
    static SoapValue string(const QString& name, const QString& v); // xsd:string
    static SoapValue boolean(const QString& name, bool value);      // xsd:boolean
    // A struct; type is its xsi:type ("tns:authInfo"), may be empty.
    static SoapValue structure(const QString& name, const QString& type = {});
    // An array whose items are of itemType ("tns:Tag", "xsd:int"); items are named "item".
    static SoapValue array(const QString& name, const QString& itemType);

    Kind kind = Kind::Nil;
    QString name;              // local name of the element (no prefix)
    QString type;              // xsi:type (struct, scalar) as written
    QString text;              // scalar text
    QString arrayItemType;     // arrays: item type as written in SOAP-ENC:arrayType ("tns:Tag")
    QList<SoapValue> children; // struct fields or array items, in document order

    bool isNil() const { return kind == Kind::Nil; }
    bool isStruct() const { return kind == Kind::Struct; }
    bool isArray() const { return kind == Kind::Array; }
    bool isScalar() const { return kind == Kind::Scalar; }

    // Appends a child and returns it.
    SoapValue& add(SoapValue child);
    // The first child of that local name, or null. `hint` speeds up reading fields in their
    // usual order: the search starts there and wraps around; it is advanced past the match.
    const SoapValue* child(QStringView childName, qsizetype* hint = nullptr) const;
    const SoapValue* child(QLatin1StringView childName, qsizetype* hint = nullptr) const;
    SoapValue* child(QStringView childName);
};

// A SOAP message: one body element (named after the method, request or reply) in a namespace,
// with its parameters in order; or a fault.
struct SoapFault {
    QString faultcode;
    QString faultactor;
    QString faultstring;
    QString detail;
};

struct SoapMessage {
    QString method;   // local name of the body's first element ("getTag", "getTagResponse")
    QString methodNS; // its namespace
    QList<SoapValue> params;
    bool isFault = false;
    SoapFault fault;
};

// Writes a request or a reply envelope (UTF-8, one line, xsi:type on scalars, typed arrays).
// `nsPrefix` is the prefix given to methodNS ("tns"); struct and array types written with that
// prefix refer to it.
QByteArray WriteEnvelope(const SoapMessage& message,
                         const QString& nsPrefix = QStringLiteral("tns"));
// Writes a fault envelope (SOAP-ENV:Fault with faultcode, faultactor, faultstring, detail).
QByteArray WriteFault(const SoapFault& fault);

// Reads an envelope: any namespace prefixes, the encoding named by the XML declaration, no DTD
// (a document type declaration is refused, which also rules out entity expansion). On failure
// returns false and says why in *error (the message keeps what was read so far).
bool ReadEnvelope(const QByteArray& bytes, SoapMessage& message, QString* error = nullptr);

// Text of an XML document decoded by the encoding its declaration names (UTF-8 when it names
// none or one this system does not know).
QString DecodeXmlText(const QByteArray& bytes);

// The xsd scalar type names.
inline const QString kXsdInt = QStringLiteral("xsd:int");
inline const QString kXsdDouble = QStringLiteral("xsd:double");
inline const QString kXsdString = QStringLiteral("xsd:string");
inline const QString kXsdBoolean = QStringLiteral("xsd:boolean");

// Text of a double as the envelope carries it (shortest round-trip form, "154.815").
QString DoubleText(double value);

} // namespace kestrel::soap
