#include "access/clsEncryption.h"

#include <QtEndian>
#include <openssl/evp.h>

namespace qln {

namespace {
constexpr int kBlock = 16;
constexpr int kLengthBytes = 4;

const EVP_CIPHER *cipherFor(int nk)
{
    switch (nk) {
    case 4: return EVP_aes_128_ecb();
    case 6: return EVP_aes_192_ecb();
    case 8: return EVP_aes_256_ecb();
    default: return nullptr;
    }
}
} // namespace

struct clsEncryption::Contexts {
    EVP_CIPHER_CTX *encrypt = EVP_CIPHER_CTX_new();
    EVP_CIPHER_CTX *decrypt = EVP_CIPHER_CTX_new();
    bool keyed = false;
    ~Contexts()
    {
        EVP_CIPHER_CTX_free(encrypt);
        EVP_CIPHER_CTX_free(decrypt);
    }
};

clsEncryption::clsEncryption() : m_ctx(std::make_unique<Contexts>()) {}

clsEncryption::~clsEncryption() = default;

bool clsEncryption::gkey(int nb, int nk, const QByteArray &key)
{
    m_ctx->keyed = false;
    const EVP_CIPHER *cipher = cipherFor(nk);
    if (nb != 4 || !cipher || key.size() < nk * 4)
        return false;
    const auto *bytes = reinterpret_cast<const unsigned char *>(key.constData());
    if (EVP_EncryptInit_ex(m_ctx->encrypt, cipher, nullptr, bytes, nullptr) != 1 ||
        EVP_DecryptInit_ex(m_ctx->decrypt, cipher, nullptr, bytes, nullptr) != 1)
        return false;
    EVP_CIPHER_CTX_set_padding(m_ctx->encrypt, 0);
    EVP_CIPHER_CTX_set_padding(m_ctx->decrypt, 0);
    m_ctx->keyed = true;
    return true;
}

bool clsEncryption::run(bool encrypt, QByteArray &block)
{
    if (!m_ctx->keyed || block.size() != kBlock)
        return false;
    EVP_CIPHER_CTX *ctx = encrypt ? m_ctx->encrypt : m_ctx->decrypt;
    unsigned char out[kBlock * 2];
    int written = 0;
    const auto *in = reinterpret_cast<const unsigned char *>(block.constData());
    const int ok = encrypt ? EVP_EncryptUpdate(ctx, out, &written, in, kBlock) : EVP_DecryptUpdate(ctx, out, &written, in, kBlock);
    if (ok != 1 || written != kBlock)
        return false;
    block = QByteArray(reinterpret_cast<const char *>(out), kBlock);
    return true;
}

bool clsEncryption::Encrypt(QByteArray &block) { return run(true, block); }

bool clsEncryption::Decrypt(QByteArray &block) { return run(false, block); }

bool clsEncryption::cipherKey(const QByteArray &password)
{
    QByteArray key = password.left(kBlock);
    key.append(QByteArray(kBlock - key.size(), '\0'));
    return gkey(4, 4, key);
}

bool clsEncryption::EncryptData(const QByteArray &message, const QByteArray &password, QByteArray &out)
{
    out.clear();
    if (message.isEmpty() || password.isEmpty() || !cipherKey(password))
        return false;
    QByteArray plain(kLengthBytes, '\0');
    qToLittleEndian<qint32>(qint32(message.size()), plain.data());
    plain += message;
    plain.append(QByteArray((kBlock - plain.size() % kBlock) % kBlock, '\0'));
    for (qsizetype at = 0; at < plain.size(); at += kBlock) {
        QByteArray block = plain.mid(at, kBlock);
        if (!Encrypt(block)) {
            out.clear();
            return false;
        }
        out += block;
    }
    return true;
}

bool clsEncryption::DecryptData(const QByteArray &message, const QByteArray &password, QByteArray &out)
{
    out.clear();
    if (message.isEmpty() || message.size() % kBlock != 0 || password.isEmpty() || !cipherKey(password))
        return false;
    QByteArray plain;
    for (qsizetype at = 0; at < message.size(); at += kBlock) {
        QByteArray block = message.mid(at, kBlock);
        if (!Decrypt(block))
            return false;
        plain += block;
    }
    const qint32 length = qFromLittleEndian<qint32>(plain.constData());
    if (length < 1 || length > plain.size() - kLengthBytes)
        return false;
    out = plain.mid(kLengthBytes, length);
    return true;
}

} // namespace qln
