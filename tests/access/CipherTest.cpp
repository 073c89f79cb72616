#include "access/EncryptionOps.h"
#include "access/SalesCode.h"
#include "access/clsEncryption.h"
#include "access/clsSHA256.h"

#include <gtest/gtest.h>

using namespace qln;

TEST(Hash, MatchesTheStandardVectors)
{
    clsSHA256 hash;
    EXPECT_EQ(hash.SHA256(QString()).toStdString(), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(hash.SHA256(QStringLiteral("abc")).toStdString(),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(BlockCipher, EnciphersTheStandardExampleBlockAndBack)
{
    clsEncryption cipher;
    const QByteArray key = QByteArray::fromHex("000102030405060708090a0b0c0d0e0f");
    QByteArray block = QByteArray::fromHex("00112233445566778899aabbccddeeff");
    ASSERT_TRUE(cipher.gkey(4, 4, key));
    ASSERT_TRUE(cipher.Encrypt(block));
    EXPECT_EQ(block.toHex().toStdString(), "69c4e0d86a7b0430d8cdb78070b4c55a");
    ASSERT_TRUE(cipher.Decrypt(block));
    EXPECT_EQ(block.toHex().toStdString(), "00112233445566778899aabbccddeeff");

    EXPECT_FALSE(cipher.gkey(6, 4, key)) << "AES has only the 4-word block";
    QByteArray shortBlock("abc");
    EXPECT_FALSE(cipher.Encrypt(shortBlock));
}

TEST(BlockCipher, DataCarriesItsLengthInWholeBlocksAndRefusesWhatDoesNotFit)
{
    clsEncryption cipher;
    QByteArray out, back;
    EXPECT_FALSE(cipher.EncryptData(QByteArray(), "key", out));
    EXPECT_FALSE(cipher.EncryptData("message", QByteArray(), out));
    EXPECT_TRUE(out.isEmpty());

    ASSERT_TRUE(cipher.EncryptData(QByteArray(12, 'x'), "key", out));
    EXPECT_EQ(out.size(), 16) << "4 bytes of length and 12 of message fill one block";
    ASSERT_TRUE(cipher.EncryptData(QByteArray(13, 'x'), "key", out));
    EXPECT_EQ(out.size(), 32);
    ASSERT_TRUE(cipher.DecryptData(out, "key", back));
    EXPECT_EQ(back, QByteArray(13, 'x'));

    EXPECT_FALSE(cipher.DecryptData(out.left(31), "key", back));
    EXPECT_TRUE(back.isEmpty());
    EXPECT_FALSE(cipher.DecryptData(out, "other", back)) << "a wrong key gives a length that does not fit";
    // Only the first 16 bytes of the password are the key; a shorter one is zero filled.
    ASSERT_TRUE(cipher.EncryptData("m", QByteArray("0123456789abcdefTAIL"), out));
    EXPECT_TRUE(cipher.DecryptData(out, "0123456789abcdef", back));
    ASSERT_TRUE(cipher.EncryptData("m", "ab", out));
    EXPECT_TRUE(cipher.DecryptData(out, QByteArray("ab\0\0", 4), back));
}

TEST(TextCipher, FourteenCharactersFitTheColumnAndFifteenDoNot)
{
    const QString key = QStringLiteral("ANNAqxAN");
    const QString fourteen = gfsEncrypt_Text(QStringLiteral("abcdefghij1234"), key);
    EXPECT_EQ(fourteen.size(), 64);
    EXPECT_EQ(fourteen, fourteen.toUpper());
    EXPECT_EQ(gfsEncrypt_Text(QStringLiteral("abcdefghij12345"), key).size(), 96);
    EXPECT_EQ(gfsDecrypt_Text(fourteen, key), QStringLiteral("abcdefghij1234"));
    EXPECT_EQ(gfsDecrypt_Text(QStringLiteral("  ") + fourteen.toLower() + QStringLiteral("  "), key),
              QStringLiteral("abcdefghij1234"));

    EXPECT_EQ(gfsEncrypt_Text(QStringLiteral("  pass 1  "), key), gfsEncrypt_Text(QStringLiteral("pass 1"), key))
        << "the message is trimmed";
    EXPECT_EQ(gfsDecrypt_Text(gfsEncrypt_Text(QStringLiteral("Ünïcødé€"), key), key), QStringLiteral("Ünïcødé€"));
    // The key is the first 8 characters of the key text.
    EXPECT_EQ(gfsDecrypt_Text(fourteen, QStringLiteral("ANNAqxANzzzz")), QStringLiteral("abcdefghij1234"));
    EXPECT_TRUE(gfsDecrypt_Text(fourteen, QStringLiteral("ANNAqxAM")).isEmpty());

    EXPECT_TRUE(gfbPassword_LongForm(fourteen + QStringLiteral("   ")));
    EXPECT_FALSE(gfbPassword_LongForm(gfsEncrypt_Text(QStringLiteral("abc"), key) + QString(30, QLatin1Char(' '))))
        << "one block leaves positions 39 to 53 blank";
}

TEST(TextCipher, GarbageStoredTextGivesNothing)
{
    const QString key = QStringLiteral("K");
    const QString good = gfsEncrypt_Text(QStringLiteral("secret1"), key);
    for (const QString &bad : {good.left(63), good.left(62) + QStringLiteral("ZZ"), QStringLiteral("hello world"),
                               QStringLiteral("''; DROP TABLE SalesCode"), QString(), QString(200, QLatin1Char('F'))})
        EXPECT_TRUE(gfsDecrypt_Text(bad, key).isEmpty()) << bad.toStdString();
}

TEST(RowKey, ThreeFormsComeFromTheRowsOwnFields)
{
    const QString plain = gfsRowKey_plain(QStringLiteral("ANNA    "), QStringLiteral("12"), QStringLiteral(" AN "));
    EXPECT_TRUE(plain.startsWith(QLatin1String("ANNA")));
    EXPECT_TRUE(plain.endsWith(QLatin1String("AN")));
    EXPECT_EQ(plain.size(), 8) << "a two-letter word between code and shortcut";
    EXPECT_EQ(plain, gfsRowKey_plain(QStringLiteral("ANNA"), QStringLiteral("19"), QStringLiteral("AN")))
        << "only the first digit of the store counts";
    EXPECT_NE(plain, gfsRowKey_plain(QStringLiteral("ANNA"), QStringLiteral("2"), QStringLiteral("AN")));
    EXPECT_EQ(gfsRowKey_current(QStringLiteral("ANNA"), QStringLiteral("12"), QStringLiteral("AN")), clsSHA256().SHA256(plain));
    EXPECT_EQ(gfsRowKey_oldest(QStringLiteral(" ANNA  ")), QStringLiteral("ANNA"));
}
