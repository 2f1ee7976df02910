// Certificates for tests.
#pragma once

#include "tests/host/http/http_test.h"

#include <openssl/ec.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

namespace cmpihost::http {

/// Makes a key, and a certificate signed by it.
inline void write_tls_files(const char* name, const TestFile& certificate_file, const TestFile& key_file) {
    EVP_PKEY* key = EVP_EC_gen("P-256");
    X509* certificate = X509_new();
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate), 0);
    X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
    X509_set_pubkey(certificate, key);
    X509_NAME* subject = X509_get_subject_name(certificate);
    X509_NAME_add_entry_by_txt(subject, "CN", MBSTRING_ASC, reinterpret_cast<const unsigned char*>(name), -1, -1, 0);
    X509_set_issuer_name(certificate, subject);
    EXPECT_NE(X509_sign(certificate, key, EVP_sha256()), 0);

    std::FILE* out = std::fopen(certificate_file.name().c_str(), "w");
    EXPECT_EQ(PEM_write_X509(out, certificate), 1);
    std::fclose(out);
    out = std::fopen(key_file.name().c_str(), "w");
    EXPECT_EQ(PEM_write_PrivateKey(out, key, nullptr, nullptr, 0, nullptr, nullptr), 1);
    std::fclose(out);
    X509_free(certificate);
    EVP_PKEY_free(key);
}

} // namespace cmpihost::http
