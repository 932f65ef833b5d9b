#pragma once

#include <QByteArray>
#include <QString>

/**
 * Ed25519 signatures of the components that can be downloaded. What is signed is the file's name, a line feed and its
 * content, so that one component's signature is none for another. The signature lies beside the file, in "name.sig", as
 * 128 hexadecimal digits. Any thread.
 */
namespace kalvo::ComponentSignature {

struct KeyPair {
    QByteArray publicKey; ///< 64 hexadecimal digits
    QByteArray secretKey; ///< 128 hexadecimal digits
};

KeyPair NewKeys();

/** The content of the ".sig" file; empty when the secret key is none. name: without a folder. */
QByteArray Sign(const QString& name, const QByteArray& content, const QByteArray& secretKey);

/** False for a wrong or broken signature, and for a public key that is none. Blanks around either do no harm. */
bool Verify(const QString& name, const QByteArray& content, const QByteArray& signature, const QByteArray& publicKey);

/** Whether the text can be a public key at all. */
bool IsPublicKey(const QByteArray& text);

} // namespace kalvo::ComponentSignature
