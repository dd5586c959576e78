// The forms in which addresses are written.
#ifndef ORVEX_TESTS_ADDRESS_FORMS_H
#define ORVEX_TESTS_ADDRESS_FORMS_H

#include <arpa/inet.h>
#include <orvex/parse.h>

#include "support/guarded.h"

namespace orvex_test {

using Bytes = std::vector<uint8_t>;

inline Bytes bytes_of(const std::string &text)
{
    const bool ipv6 = text.find(':') != std::string::npos;
    Bytes bytes(ipv6 ? 16 : 4);
    EXPECT_EQ(inet_pton(ipv6 ? AF_INET6 : AF_INET, text.c_str(), bytes.data()), 1) << text;
    return bytes;
}

struct AddressForm {
    std::string address;
    int pfxseen = 0;
    uint32_t pfxlen = 0;
    int maskseen = 0;
    Bytes mask = {};
    std::string expected;
};

// Checks each form in every size.
inline void check_forms(uint8_t full_form, Leaves leaves, const std::vector<AddressForm> &forms)
{
    for (const AddressForm &form : forms) {
        const Bytes address = bytes_of(form.address);
        const int family = address.size() == 4 ? PARSE_AF_INET : PARSE_AF_INET6;
        const uint8_t *const mask = form.mask.empty() ? nullptr : form.mask.data();
        const auto format = [&](char *buf, size_t buflen) {
            return format_ipaddr(family, address.data(), full_form, form.pfxseen, form.pfxlen, form.maskseen, mask, buf,
                                 buflen);
        };
        check_every_size(form.expected, format, leaves);
    }
}

}  // namespace orvex_test

#endif
