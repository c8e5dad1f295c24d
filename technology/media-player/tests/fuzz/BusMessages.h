/// Makes valid D-Bus messages of any text, so that a fuzzer spends its time behind the bus's own checks.
#pragma once

#include <QByteArray>

#include <dbus/dbus.h>

#include <memory>

namespace fuzz
{

struct MessageDeleter {
    void operator()(DBusMessage* aMessage) const { dbus_message_unref(aMessage); }
};
using Message = std::unique_ptr<DBusMessage, MessageDeleter>;

/// A signal; none when the text names no member. The text's lines:
///
///     MediaManager.ActiveMediaSourceChanged     interface of the stack, member
///     ss                                        signature of its arguments
///     com.example.Disc                          each string or number has a line, each array and variant
///     /disc                                     a line before its content: the number of elements, the
///                                               signature
///
/// What is wrong or missing is read as something valid: an empty signature, an empty text, 0.
Message MakeMessage(const QByteArray& aText);

} // namespace fuzz
