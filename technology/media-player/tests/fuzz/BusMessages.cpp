#include "BusMessages.h"

#include <QString>

#include <cstdlib>

namespace fuzz
{

namespace
{

constexpr int kDeepest = 16; // variants in variants; the bus allows four times as many
constexpr int kLongestArray = 8;
const QByteArray kInterfaces = "com.talvex.DBus.MediaPlayer.";

class Lines
{
public:
    explicit Lines(const QByteArray& aText) : m_Rest(aText) {}

    // Empty at the end.
    QByteArray Next()
    {
        const auto end = m_Rest.indexOf('\n');
        QByteArray line = m_Rest.left(end);
        m_Rest = end < 0 ? QByteArray() : m_Rest.mid(end + 1);
        return line;
    }

private:
    QByteArray m_Rest;
};

// Keeps what the bus would carry; what is not Unicode is taken for Latin-1.
QByteArray ToUtf8(const QByteArray& aBytes)
{
    return dbus_validate_utf8(aBytes.constData(), nullptr) != FALSE ? aBytes
                                                                    : QString::fromLatin1(aBytes).toUtf8();
}

QByteArray NextPath(Lines& aLines)
{
    const QByteArray path = aLines.Next();
    return dbus_validate_path(path.constData(), nullptr) != FALSE ? path : QByteArray("/");
}

QByteArray NextSignature(Lines& aLines)
{
    const QByteArray signature = aLines.Next();
    // A text brings no file descriptors along.
    const bool isValid = dbus_signature_validate(signature.constData(), nullptr) != FALSE;
    return isValid && !signature.contains(DBUS_TYPE_UNIX_FD) ? signature : QByteArray();
}

// Appends what a line of text says.
void AppendText(DBusMessageIter& aTo, int aType, const QByteArray& aText)
{
    const char* text = aText.constData();
    dbus_message_iter_append_basic(&aTo, aType, &text);
}

void AppendNumber(DBusMessageIter& aTo, int aType, const QByteArray& aText)
{
    DBusBasicValue number = {};
    if (aType == DBUS_TYPE_DOUBLE) {
        number.dbl = std::strtod(aText.constData(), nullptr);
    } else {
        // The narrower ones lie in its first bytes.
        number.u64 = std::strtoull(aText.constData(), nullptr, 0);
    }
    if (aType == DBUS_TYPE_BOOLEAN) {
        number.bool_val = number.u64 != 0 ? TRUE : FALSE;
    }
    dbus_message_iter_append_basic(&aTo, aType, &number);
}

void AppendAll(DBusMessageIter& aTo, DBusSignatureIter aTypes, Lines& aLines, int aDepth);

// A variant holds what its signature says once, an array any number of times.
void AppendContainer(DBusMessageIter& aTo, int aType, const char* aSignature, int aCount, Lines& aLines,
                     int aDepth)
{
    DBusMessageIter inside;
    dbus_message_iter_open_container(&aTo, aType, aSignature, &inside);
    for (int index = 0; index < aCount; ++index) {
        DBusSignatureIter types;
        dbus_signature_iter_init(&types, aSignature);
        AppendAll(inside, types, aLines, aDepth + 1);
    }
    dbus_message_iter_close_container(&aTo, &inside);
}

void AppendVariant(DBusMessageIter& aTo, Lines& aLines, int aDepth)
{
    const QByteArray signature = NextSignature(aLines);
    const bool isOne = dbus_signature_validate_single(signature.constData(), nullptr) != FALSE;
    AppendContainer(aTo, DBUS_TYPE_VARIANT, aDepth < kDeepest && isOne ? signature.constData() : "s", 1,
                    aLines, aDepth);
}

void AppendArray(DBusMessageIter& aTo, const DBusSignatureIter& aTypes, Lines& aLines, int aDepth)
{
    DBusSignatureIter element;
    dbus_signature_iter_recurse(&aTypes, &element);
    const std::unique_ptr<char, decltype(&dbus_free)> signature(dbus_signature_iter_get_signature(&element),
                                                                dbus_free);
    const int count = std::abs(std::atoi(aLines.Next().constData()) % (kLongestArray + 1));
    AppendContainer(aTo, DBUS_TYPE_ARRAY, signature.get(), count, aLines, aDepth);
}

void AppendStructure(DBusMessageIter& aTo, const DBusSignatureIter& aTypes, Lines& aLines, int aDepth)
{
    DBusSignatureIter fields;
    dbus_signature_iter_recurse(&aTypes, &fields);
    DBusMessageIter inside;
    dbus_message_iter_open_container(&aTo, dbus_signature_iter_get_current_type(&aTypes), nullptr, &inside);
    AppendAll(inside, fields, aLines, aDepth + 1);
    dbus_message_iter_close_container(&aTo, &inside);
}

void Append(DBusMessageIter& aTo, const DBusSignatureIter& aType, Lines& aLines, int aDepth)
{
    switch (const int type = dbus_signature_iter_get_current_type(&aType)) {
    case DBUS_TYPE_STRING:
        return AppendText(aTo, type, ToUtf8(aLines.Next()));
    case DBUS_TYPE_OBJECT_PATH:
        return AppendText(aTo, type, NextPath(aLines));
    case DBUS_TYPE_SIGNATURE:
        return AppendText(aTo, type, NextSignature(aLines));
    case DBUS_TYPE_VARIANT:
        return AppendVariant(aTo, aLines, aDepth);
    case DBUS_TYPE_ARRAY:
        return AppendArray(aTo, aType, aLines, aDepth);
    case DBUS_TYPE_STRUCT:
    case DBUS_TYPE_DICT_ENTRY:
        return AppendStructure(aTo, aType, aLines, aDepth);
    default:
        return AppendNumber(aTo, type, aLines.Next());
    }
}

void AppendAll(DBusMessageIter& aTo, DBusSignatureIter aTypes, Lines& aLines, int aDepth)
{
    do {
        Append(aTo, aTypes, aLines, aDepth);
    } while (dbus_signature_iter_next(&aTypes) != FALSE);
}

} // namespace

Message MakeMessage(const QByteArray& aText)
{
    Lines lines(QByteArray(aText).replace('\0', '?'));
    const QByteArray name = lines.Next();
    const auto dot = name.indexOf('.');
    const QByteArray interface = kInterfaces + name.left(dot);
    const QByteArray member = name.mid(dot + 1);
    if (dbus_validate_interface(interface.constData(), nullptr) == FALSE ||
        dbus_validate_member(member.constData(), nullptr) == FALSE) {
        return nullptr;
    }
    Message message(dbus_message_new_signal("/object", interface.constData(), member.constData()));
    const QByteArray signature = NextSignature(lines);
    if (!signature.isEmpty()) {
        DBusMessageIter arguments;
        DBusSignatureIter types;
        dbus_message_iter_init_append(message.get(), &arguments);
        dbus_signature_iter_init(&types, signature.constData());
        AppendAll(arguments, types, lines, 0);
    }
    return message;
}

} // namespace fuzz
