#include "app/ComponentSignature.h"

#include <sodium.h>

#include <algorithm>
#include <cctype>

namespace kalvo::ComponentSignature {

namespace {

/** The bytes of a text in hexadecimal digits; empty when there are not exactly `size` of them. */
QByteArray FromHex(const QByteArray& text, std::size_t size) {
    const QByteArray digits = text.trimmed();
    const auto isDigit = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
    if (static_cast<std::size_t>(digits.size()) != 2 * size || !std::all_of(digits.begin(), digits.end(), isDigit))
        return {};
    return QByteArray::fromHex(digits);
}

QByteArray Message(const QString& name, const QByteArray& content) {
    return name.toUtf8() + '\n' + content;
}

const unsigned char* Bytes(const QByteArray& bytes) {
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}

unsigned char* Bytes(QByteArray& bytes) {
    return reinterpret_cast<unsigned char*>(bytes.data());
}

} // namespace

KeyPair NewKeys() {
    QByteArray publicKey(crypto_sign_PUBLICKEYBYTES, '\0');
    QByteArray secretKey(crypto_sign_SECRETKEYBYTES, '\0');
    if (sodium_init() < 0 || crypto_sign_keypair(Bytes(publicKey), Bytes(secretKey)) != 0)
        return {};
    return {publicKey.toHex(), secretKey.toHex()};
}

QByteArray Sign(const QString& name, const QByteArray& content, const QByteArray& secretKey) {
    const QByteArray key = FromHex(secretKey, crypto_sign_SECRETKEYBYTES);
    if (key.isEmpty() || sodium_init() < 0)
        return {};
    const QByteArray message = Message(name, content);
    QByteArray signature(crypto_sign_BYTES, '\0');
    const auto size = static_cast<unsigned long long>(message.size());
    if (crypto_sign_detached(Bytes(signature), nullptr, Bytes(message), size, Bytes(key)) != 0)
        return {};
    return signature.toHex() + '\n';
}

bool Verify(const QString& name, const QByteArray& content, const QByteArray& signature, const QByteArray& publicKey) {
    const QByteArray key = FromHex(publicKey, crypto_sign_PUBLICKEYBYTES);
    const QByteArray bytes = FromHex(signature, crypto_sign_BYTES);
    if (key.isEmpty() || bytes.isEmpty() || sodium_init() < 0)
        return false;
    const QByteArray message = Message(name, content);
    const auto size = static_cast<unsigned long long>(message.size());
    return crypto_sign_verify_detached(Bytes(bytes), Bytes(message), size, Bytes(key)) == 0;
}

bool IsPublicKey(const QByteArray& text) {
    return !FromHex(text, crypto_sign_PUBLICKEYBYTES).isEmpty();
}

} // namespace kalvo::ComponentSignature
