#pragma once
#include <QByteArray>

#include <memory>

namespace qln {

// The block cipher of the stored passwords: AES in ECB, one 16-byte block at a time, with
// a length prefix and zero fill around the message.
class clsEncryption {
public:
    clsEncryption();
    ~clsEncryption();
    clsEncryption(const clsEncryption &) = delete;
    clsEncryption &operator=(const clsEncryption &) = delete;

    // Sets the key: nb words per block (4 is the only block size AES has), nk words of key
    // (4, 6 or 8) taken from the front of key. False when the sizes are not served.
    bool gkey(int nb, int nk, const QByteArray &key);
    // One 16-byte block in place under the last key; false without a key or a whole block.
    bool Encrypt(QByteArray &block);
    bool Decrypt(QByteArray &block);

    // The message behind its length, zero filled to whole blocks, under the first 16 bytes
    // of password (zero filled). False, out empty, for an empty message or password.
    bool EncryptData(const QByteArray &message, const QByteArray &password, QByteArray &out);
    // The reverse. False, out empty, when the bytes are not whole blocks or the length they
    // hold does not fit.
    bool DecryptData(const QByteArray &message, const QByteArray &password, QByteArray &out);

private:
    struct Contexts;
    bool run(bool encrypt, QByteArray &block);
    bool cipherKey(const QByteArray &password);

    std::unique_ptr<Contexts> m_ctx;
};

} // namespace qln
