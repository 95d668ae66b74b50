#include "base/RuntimeError.h"

RuntimeError::RuntimeError(int number, QString description)
    : m_number(number), m_description(std::move(description)), m_what(m_description.toUtf8()) {
}

RuntimeError RuntimeError::overflow() {
    return {Overflow, QStringLiteral("Überlauf")};
}

RuntimeError RuntimeError::typeMismatch() {
    return {TypeMismatch, QStringLiteral("Typen unverträglich")};
}

RuntimeError RuntimeError::invalidCall() {
    return {InvalidCall, QStringLiteral("Ungültiger Prozeduraufruf oder ungültiges Argument")};
}

RuntimeError RuntimeError::subscriptOutOfRange() {
    return {SubscriptOutOfRange, QStringLiteral("Index außerhalb des gültigen Bereichs")};
}
