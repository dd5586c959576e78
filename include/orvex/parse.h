/*
 * liborvex-parse: text that an operator types to binary values, and back.
 *
 * Every function works on memory that the caller owns, allocates nothing, and may be called from
 * several threads at once, each on its own outputs. Nothing is kept between calls but two
 * properties of the platform; see parse_interface.
 *
 * Conventions, unless a function says otherwise:
 *  - A text is NUL-terminated. White space is blank, TAB, LF, VT, FF and CR, whatever the locale.
 *  - Addresses and masks are in network order, 4 bytes for IPv4 and 16 bytes for IPv6.
 *  - Numbers convert as by strtol and strtoul of the 32-bit target, on every host: white space and
 *    one sign may precede the digits, values saturate at the ends of the 32-bit range, and an
 *    unsigned conversion wraps a negated value.
 *  - Failure messages go to an error buffer of `errlen` bytes, for operators to read unchanged. A
 *    null buffer or a length of 0 means that no message is written. A message that does not fit is
 *    cut; it is always terminated inside the buffer. On success the buffer is unchanged.
 *  - Formatters terminate their text inside the buffer, however small it is, and change no byte
 *    after the terminator. A buffer of size 0 is not written.
 *  - A required pointer that is null is a programming error. Where a function says that it is
 *    logged, it goes to the platform's logging() and the call goes on as the function describes.
 *  - Nothing that is passed to one call may overlap, neither inputs and outputs nor two outputs.
 *  - errno is unchanged.
 *
 * What the functions return on success and on failure. Not all parsers return 0 on success:
 *
 *                                                    success         failure
 *   parse_ipaddr, parse_interface, parse_mac_addr,
 *   parse_delim_dec_addr, parse_delim_hex_addr,
 *   parse_iso_addr, parse_iso_sysid                  0               -1 or -2
 *   parse_integer, parse_quad,
 *   parse_4_level_chassis, parse_esi                 0               -1
 *   parse_inetvpn_rd, parse_atmvpn                   0               1
 *   parse_number, decode_dhms                        1               0
 *   ifalias_to_ifl, format_rfc5952                   1               0
 *   format_ipaddr, _format_ipv6addr,
 *   format_ipv6addr_partial                          text length     0
 *   format_mac_addr                                  text length     text length, >= buflen: cut
 *   format_delim_addr                                length + 1      length + 1, > buflen: cut
 *   format_esi                                       29              buflen: cut
 *   format_iso_addr, format_iso_sysid                length of the last piece: no sign of a cut
 *   format_in6_addr, format_in6_prefix               start of text   start of what fits
 *   parse_is_iso_addr, parse_is_iso_sysid,
 *   parse_is_atmvpn, parse_ipaddr_is_unicast,
 *   is_interface_alias                               1 yes, 0 no     none
 *   ipv6_address_type, get_fpc_picslots_byname       the value       none
 *
 * A text that is formatted into a buffer of its FORMAT_..._BUFSIZE is never cut.
 */
#ifndef ORVEX_PARSE_H
#define ORVEX_PARSE_H

#include <stddef.h>
#include <stdint.h>
#include <stdio.h>

#if defined(__GNUC__)
#define ORVEX_PARSE_API __attribute__((visibility("default")))
#else
#define ORVEX_PARSE_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The release that this header belongs to; that of the library at run time is in sw_version. */
#define ORVEX_PARSE_VERSION_MAJOR 1
#define ORVEX_PARSE_VERSION_MINOR 0
#define ORVEX_PARSE_VERSION_PATCH 0
#define ORVEX_PARSE_VERSION_STRING "1.0.0"

/* One number that grows with each release, for #if: 10203 for 1.2.3. */
#define ORVEX_PARSE_VERSION                                                \
    (ORVEX_PARSE_VERSION_MAJOR * 10000 + ORVEX_PARSE_VERSION_MINOR * 100 + \
     ORVEX_PARSE_VERSION_PATCH)

/*
 * A size for error buffers: room for every message about a text of up to 80 characters, terminator
 * included. Messages about longer texts, which may quote them twice, may be cut.
 */
#define PARSE_ERROR_BUFSIZE 256

/* ---- Numbers --------------------------------------------------------------------------------- */

/*
 * Reads a whole text as a signed 32-bit integer: hexadecimal after "0x" or "0X", octal after any
 * other leading 0, decimal otherwise. Nothing may follow the digits, not even white space.
 *
 * Returns 0 on success, with errno 0, or -1 on failure:
 *  - `str` or `value` is null: `*value` is unchanged, errno EINVAL;
 *  - the text has no digits, or characters after them: `*value` is 0, errno ERANGE when the digits
 *    are out of range, else 0;
 *  - the number is out of range: `*value` is unchanged, errno ERANGE.
 *
 * Example:
 *     int32_t number;
 *     if (parse_integer("0x1f", &number) == 0) printf("%d\n", number);  // 31
 */
ORVEX_PARSE_API int parse_integer(const char *str, int32_t *value);

/* As parse_integer, for a signed 64-bit integer. */
ORVEX_PARSE_API int parse_quad(const char *str, int64_t *value);

/*
 * Reads a whole text as a decimal number from 0 to `limit` - 1; leading zeros do not make it octal.
 * An empty text is 0. `value` must not be null.
 *
 * Returns 1 on success. Returns 0, with `*value` 0, when `str` is null, when characters follow the
 * digits, or when the number is negative or not below `limit`. errno is ERANGE when the number is
 * out of the signed 32-bit range (which always fails), and otherwise unchanged.
 */
ORVEX_PARSE_API int parse_number(const char *str, int32_t *value, int32_t limit);

/* ---- IP addresses: text to value ------------------------------------------------------------- */

/* Family codes of the target, the same on every host whatever its own headers say. */
#define PARSE_AF_INET 2
#define PARSE_AF_INET6 28

/*
 * Further codes that parse_ipaddr knows, each named after its base, PARSE_AF_INET or
 * PARSE_AF_INET6: it has the base's texts, sizes and class rules. The other functions know the two
 * bases only.
 */
#define PARSE_AF_INET_73 73
#define PARSE_AF_INET_119 119
#define PARSE_AF_INET6_121 121
#define PARSE_AF_INET_129 129
#define PARSE_AF_INET6_131 131
#define PARSE_AF_INET_139 139
#define PARSE_AF_INET6_141 141

/* The value of errno for an unsupported family, the same on every host. */
#define PARSE_EAFNOSUPPORT 47

/* Flags of parse_ipaddr. Bits that are not listed have no effect. */
#define PARSE_IPADDR_PREFIX_OK 0x1U       /* "/" and a prefix length may follow the address */
#define PARSE_IPADDR_PREFIX_REQUIRED 0x2U /* a prefix length or a mask must be given */
#define PARSE_IPADDR_ALL_BYTES 0x4U       /* IPv4: all four groups of an address or dotted mask */
#define PARSE_IPADDR_MASK_OK 0x8U         /* with PARSE_IPADDR_PREFIX_OK: a mask may follow */
#define PARSE_IPADDR_DEFAULT_OK 0x10U     /* "default" and "all" mean 0.0.0.0/0 or ::/0 */
#define PARSE_IPADDR_INTEGER_OK 0x20U     /* IPv4: one decimal number is the whole address */
#define PARSE_IPADDR_HOST_ZERO 0x80U      /* bits after the prefix or outside the mask must be 0 */
#define PARSE_IPADDR_MULTICAST 0x100U     /* the address must be in 224.0.0.0/4 or ff00::/8 */
#define PARSE_IPADDR_ANY_OK 0x200U        /* IPv4: "any-unicast" and "any-multicast" */
#define PARSE_IPADDR_NO_MARTIAN 0x400U    /* IPv4: not 0.0.0.0, 127/8, 192.0.0/24 or 224/3 */
#define PARSE_IPADDR_UNICAST 0x800U       /* unicast, as in parse_ipaddr_is_unicast */

/*
 * Mask words of the IPv4 keywords "any-unicast" and "any-multicast": the four bytes of the mask
 * hold one of them as a uint32_t in the machine's own byte order; the address is 0.0.0.0.
 */
#define IPADDR_ANY_UNICAST 1U
#define IPADDR_ANY_MULTICAST 2U

/*
 * Reads an IPv4 or IPv6 address, and what `flags` allow after it or instead of it.
 *
 * `af`        in and out, required: PARSE_AF_INET, PARSE_AF_INET6 or a further code based on one of
 *             them; or 0, which is replaced, also on failure, by PARSE_AF_INET6 when the text has a
 *             ":", else by PARSE_AF_INET.
 * `str`       the text, required. A null `af` or `str` is logged and counts as 0 or an empty text.
 * `flags`     PARSE_IPADDR_ bits.
 * `address`   receives 4 or 16 bytes; `address_len` is its size.
 * `pfxseen`   receives 1 for a prefix length, "default" and "all", else 0.
 * `pfxlen`    receives the prefix length, 0 to 32 or 0 to 128; 32 or 128 when none was given.
 * `maskseen`  receives 1 for a mask and an "any-" keyword, else 0.
 * `mask`      receives 4 or 16 bytes when a mask was given, which need not be contiguous;
 *             `mask_len` is its size. It is unchanged without a mask, except that under
 *             PARSE_IPADDR_ANY_OK every IPv4 text but "default" and "all" under
 *             PARSE_IPADDR_DEFAULT_OK sets it to zero, or to a keyword's word.
 * Each output may be null; the text is checked all the same.
 *
 * IPv4 texts: one to four decimal groups of 0 to 255 joined by ".", never octal, the missing ones
 * zero ("10.1" and "10.1." are 10.1.0.0); a hexadecimal number of 32 bits after
 * "0x"; under PARSE_IPADDR_INTEGER_OK one decimal number. The prefix length may be decimal, octal
 * (leading 0) or hexadecimal (leading 0x). A text with a "/" has at most 31 characters. IPv6 texts:
 * those of RFC 4291 section 2.2. The prefix length is decimal. A text with a "/" has at most 91
 * characters. Neither a group nor a prefix length may start with "-".
 *
 * Returns
 *   0  success.
 *  -1  the text, or an IPv4 mask in it, cannot be read: errno EINVAL, but unchanged when the IPv6
 *      address is not valid; or the family is not supported: errno PARSE_EAFNOSUPPORT.
 *  -2  the text is an address but wrong or not allowed here: errno EINVAL, but unchanged when an
 *      IPv6 mask is not valid or one of PARSE_IPADDR_MULTICAST, PARSE_IPADDR_NO_MARTIAN and
 *      PARSE_IPADDR_UNICAST refuses it; or `address` or `mask` is too small: errno ENOSPC.
 * For an unsupported family or too small an output nothing is written but `*af` and the message. On
 * any other failure the outputs hold what was read before it, `*pfxlen` also a refused length (0
 * when no digit was read).
 *
 * Example:
 *     uint32_t af = 0, pfxlen;
 *     uint8_t address[16];
 *     char error[PARSE_ERROR_BUFSIZE];
 *     if (parse_ipaddr(&af, "10.1.0.0/33", PARSE_IPADDR_PREFIX_OK, address, sizeof address, NULL,
 *                      &pfxlen, NULL, NULL, 0, error, sizeof error) != 0)
 *         puts(error);  // prefix length '33' is larger than 32 in address '10.1.0.0/33'
 */
ORVEX_PARSE_API int parse_ipaddr(uint32_t *af, const char *str, uint32_t flags, void *address,
                                 size_t address_len, int *pfxseen, uint32_t *pfxlen, int *maskseen,
                                 void *mask, size_t mask_len, char *errbuf, size_t errlen);

/*
 * Checks whether an address is unicast. `af` is PARSE_AF_INET (`address` is 4 bytes: all but
 * 0.0.0.0, 255.255.255.255 and 224.0.0.0/4) or PARSE_AF_INET6 (16 bytes: all but :: and ff00::/8).
 * `address` must not be null. Returns 1 or 0; 0 for any other family code.
 */
ORVEX_PARSE_API int parse_ipaddr_is_unicast(uint32_t af, const void *address);

/* Results of ipv6_address_type. */
#define IPV6_ADDRESS_TYPE_NONE 0       /* no address (null), or the unspecified address :: */
#define IPV6_ADDRESS_TYPE_LINK_LOCAL 1 /* fe80::/10 */
#define IPV6_ADDRESS_TYPE_SITE_LOCAL 2 /* fec0::/10 */
#define IPV6_ADDRESS_TYPE_MULTICAST 3  /* ff00::/8 */
#define IPV6_ADDRESS_TYPE_OTHER 4      /* any other address */

/* Returns the class of a 16-byte IPv6 address (RFC 4291 section 2.4); `address` may be null. */
ORVEX_PARSE_API int ipv6_address_type(const void *address);

/* ---- IP addresses: value to text ------------------------------------------------------------- */

/* Room for every text of the three functions below, terminator included. */
#define FORMAT_IPADDR_BUFSIZE 80

/*
 * Writes a 16-byte IPv6 address, and a prefix length or a mask after it.
 *
 * `full_form` 0 gives the compressed form ("2001:db8::1/64"): no leading zeros, "::" for the
 * longest run of two or more zero groups, the first of equal ones, and the last 32 bits in dotted
 * form in ::ffff:0:0/96 and in ::/96 above ::ffff. Any other value gives the fixed-width form:
 * eight groups of four lower-case digits, the prefix length in at least four digits
 * ("2001:0db8:0000:0000:0000:0000:0000:0001/0064"), and zeros in the rest of `buf`.
 * `pfxseen` not 0 appends "/" and `pfxlen`; otherwise `maskseen` not 0 with a `mask` that is not
 * null appends "/" and the 16-byte mask in the same form.
 *
 * Returns the length of the text without its terminator. Returns 0
 *  - with errno ENOSPC when `buf` is null, `buflen` is 0 or the text does not fit. The buffer then
 *    holds an empty text when the compressed address does not fit, the address and "/" as far as
 *    they fit when the compressed mask does not, and otherwise the text cut short;
 *  - with errno EINVAL and an empty text when there is a buffer but `address` is null, which is
 *    logged.
 */
ORVEX_PARSE_API size_t _format_ipv6addr(const void *address, uint8_t full_form, int pfxseen,
                                        uint32_t pfxlen, int maskseen, const void *mask, char *buf,
                                        size_t buflen);

/*
 * Writes an IPv6 prefix given by its leading bytes only, in the compressed form: the first `pfxlen`
 * bits (0 to 128) of `prefix` and zeros after them, and "/" and `pfxlen` when `pfxseen` is not 0.
 * No byte of `prefix` after those bits is read; `prefix` may be null when `pfxlen` is 0.
 *
 * Returns as _format_ipv6addr; but whatever the buffer, 0 with errno EINVAL and an empty text when
 * `pfxlen` is above 128.
 */
ORVEX_PARSE_API size_t format_ipv6addr_partial(const void *prefix, uint32_t pfxlen, uint8_t pfxseen,
                                               char *buf, size_t buflen);

/*
 * Writes an IPv4 (`af` PARSE_AF_INET) or IPv6 (PARSE_AF_INET6) address, and a prefix length or a
 * mask after it. IPv6 values are written as _format_ipv6addr does. For IPv4:
 *
 * `full_form` 0 writes octets without leading zeros ("10.0.0.1/24"); any other value writes three
 * digits for each octet and for the prefix length ("010.000.000.001/024"), and zeros into the rest
 * of `buf`.
 * `maskseen` not 0 with a `mask` that holds the word IPADDR_ANY_UNICAST or IPADDR_ANY_MULTICAST
 * writes "any-unicast" or "any-multicast" and nothing else.
 * Otherwise `pfxseen` not 0 appends "/" and the low 8 bits of `pfxlen`; otherwise `maskseen` not 0
 * with a `mask` that is not null appends "/" and the mask.
 *
 * Returns the length of the text without its terminator. Returns 0
 *  - with errno EINVAL and `buf` unchanged for another family, and with an empty text when there is
 *    a buffer but `address` is needed and null, which is logged;
 *  - with errno ENOSPC when `buf` is null, `buflen` is 0 or the text does not fit. The buffer then
 *    holds the text cut short, or an empty text in place of a keyword; for IPv6, what
 *    _format_ipv6addr leaves.
 *
 * Example:
 *     const uint8_t address[4] = {10, 1, 0, 0};
 *     char text[FORMAT_IPADDR_BUFSIZE];
 *     format_ipaddr(PARSE_AF_INET, address, 0, 1, 16, 0, NULL, text, sizeof text);
 *     puts(text);  // 10.1.0.0/16
 */
ORVEX_PARSE_API size_t format_ipaddr(int af, const void *address, uint8_t full_form, int pfxseen,
                                     uint32_t pfxlen, int maskseen, const void *mask, char *buf,
                                     size_t buflen);

/* The size of the buffer of format_rfc5952. */
#define FORMAT_RFC5952_BUFSIZE 47

/*
 * Rewrites the text of an IPv6 address in place into the canonical form of RFC 5952 section 4:
 * lower case, no leading zeros, "::" for the longest run of two or more zero groups, the first of
 * equal ones. A dotted IPv4 part in place of the last two groups is kept, and none is added; the
 * "::" is chosen without regard to it, and may then replace one group alone.
 *
 * `text`  a buffer of at least FORMAT_RFC5952_BUFSIZE bytes, or null. On success so many are
 *         written: the text, at most 45 characters, and zeros.
 * Returns 1. Returns 0, with the buffer unchanged, when `text` is null or not an IPv6 address of
 * RFC 4291 section 2.2.
 *
 * Example:
 *     char text[FORMAT_RFC5952_BUFSIZE] = "2001:DB8:0:0:0:0:0:1";
 *     if (format_rfc5952(text) == 1) puts(text);  // 2001:db8::1
 */
ORVEX_PARSE_API int format_rfc5952(char *text);

/* Room for every text of the two functions below, terminator included. */
#define FORMAT_IN6_BUFSIZE 44

/*
 * Writes the leading `pfxlen` bits (0 to 128) of a 16-byte IPv6 address at the right end of a
 * buffer, for listings: the groups after them are "::", or "0" when there is only one. Unlike in
 * RFC 5952, the first run of two or more zero groups from the right is compressed. An IPv4-mapped
 * address, or an IPv4-compatible one but :: and ::1, ends in a dotted part when `pfxlen` is above
 * 112. The byte in which the prefix ends is written whole, and the bytes after it as zero.
 *
 * `terminate` not 0 puts a terminator into the last byte of `buf`; otherwise the text ends there.
 *
 * Returns a pointer to the first character of the text, inside `buf`; the bytes before it are
 * unchanged. A text that does not fit keeps its right end and the terminator. `address` and `buf`
 * must not be null.
 *
 * Example:
 *     const uint8_t address[16] = {0x20, 0x01, 0x0d, 0xb8};
 *     char room[FORMAT_IN6_BUFSIZE];
 *     puts(format_in6_addr(address, 32, room, sizeof room, 1));  // 2001:db8::
 */
ORVEX_PARSE_API char *format_in6_addr(const void *address, int pfxlen, char *buf, size_t buflen,
                                      int terminate);

/* As format_in6_addr, with "/" and the prefix length after the address. */
ORVEX_PARSE_API char *format_in6_prefix(const void *address, int pfxlen, char *buf, size_t buflen,
                                        int terminate);

/* ---- Interface names ------------------------------------------------------------------------- */

/* An entry of the platform's interface-type catalogue, declared in orvex/platform.h. */
struct interface_info;

/* Values of the number fields of a parsed_interface that are no numbers. */
#define IF_FIELD_ABSENT (-1)   /* not given */
#define IF_FIELD_WILD_ONE (-2) /* "?" */
#define IF_FIELD_WILD_ANY (-3) /* "*" */
#define IF_FIELD_RANGE (-4)    /* a bracketed range, whose numbers the caller reads from the name */

/* An interface name's parts. */
struct parsed_interface {
    char type_name[60];    /* as typed, or "all"; terminated */
    int32_t fpc;           /* FPC, system-wide; the device number of types that have one */
    int32_t pic;           /* PIC, or expansion slot */
    int32_t port;          /* port */
    int32_t channels[8];   /* level 1 first */
    int32_t channel_count; /* levels given, at most 6; IF_FIELD_ABSENT when none */
    char direction[5];     /* "-rx", "-tx" or empty; terminated */
    int32_t unit;          /* logical unit */
};

/*
 * Flags of parse_interface, from the caller or from the interface type's catalogue entry. Bits that
 * are not listed have no effect. After the numbers of PARSE_IF_EXPANSION_SLOT and
 * PARSE_IF_PORT_FIRST the FPC or device number follows, unless PARSE_IF_NO_SLOT is set.
 */
#define PARSE_IF_MGMT 0x1U                /* one device number; no PIC or port, and no channel */
                                          /* unless PARSE_IF_CHANNELS is set */
#define PARSE_IF_CHANNELS 0x2U            /* ":" channel numbers may follow the port */
#define PARSE_IF_NO_SLOT 0x4U             /* no FPC or device number */
#define PARSE_IF_NEED_FPC_PIC_PORT 0x8U   /* FPC, PIC and port must be given; no effect with */
                                          /* PARSE_IF_MGMT or PARSE_IF_RLSQ */
#define PARSE_IF_NO_UNIT 0x10U            /* a unit is refused */
#define PARSE_IF_ALLOW_ALL 0x20U          /* from the caller only: the name "all" is accepted */
#define PARSE_IF_WILDCARD 0x80U           /* "?" and "*" are accepted as numbers */
#define PARSE_IF_AFTER_SEP 0x100U         /* set by the parser itself; to be left clear */
#define PARSE_IF_DEFAULT_UNIT 0x200U      /* a missing unit is 0 if the port (or the device */
                                          /* number) is given, or with PARSE_IF_NO_SLOT */
#define PARSE_IF_NEED_CHANNEL 0x2000U     /* a channel number or a direction is required */
#define PARSE_IF_NO_UNIT_MAX 0x8000U      /* units go up to 1074003967 whatever the type */
#define PARSE_IF_RLSQ 0x20000U            /* one device number; no PIC or port */
#define PARSE_IF_AT_UNIT_32767 0x40000U   /* type "at": unit 32767 is accepted */
#define PARSE_IF_RANGES 0x80000U          /* "[0-3]" and "[0,2]" are accepted as numbers; the */
                                          /* name must be type-fpc/pic/port; from the caller, the */
                                          /* part before the "-" must be a type */
#define PARSE_IF_WIDE_FPC 0x100000U       /* the first slot number goes up to 255 */
#define PARSE_IF_EXPANSION_SLOT 0x400000U /* type-slot-port, the slot in `pic` */
#define PARSE_IF_PORT_FIRST 0x800000U     /* a port number directly after the type */

/*
 * Reads an interface name, "eth-1/2/0:3.100": [chassis:]type-fpc[/pic[/port]][:channel…][.unit],
 * with "-rx" or "-tx" in place of channels, type-lcc/fpc/pic/port on a multi-chassis system, and
 * the other forms that the type's catalogue entry selects. The platform's product, chassis and
 * interface types bound every number. In a container every name but "lo0" is accepted, and no part
 * of it is read but its chassis prefix.
 *
 * `name`    the name; a null or empty one is logged. A null one is refused.
 * `flags`   PARSE_IF_ bits to add to those of the catalogue entry.
 * `mask`    PARSE_IF_ bits to clear in both.
 * `result`  required; unchanged when the chassis prefix is refused. Otherwise it is reset and
 *           receives what is read: of a refused name what precedes the fault, and also a refused
 *           range (IF_FIELD_RANGE) or a unit above the highest.
 *
 * Numbers are decimal and convert as strtoul does. A range's numbers are checked and not stored.
 *
 * Returns
 *   0  the name is accepted. Exception to the convention: `errbuf` may hold the message of a number
 *      that was refused at first: a slot number on a system with virtual FPCs, or the missing one
 *      of "type-" under PARSE_IF_WILDCARD.
 *  -1  this is no interface name: its chassis prefix or its type is refused, text follows it, or
 *      with ranges it is incomplete.
 *  -2  the type is known, but the product does not support it or another part breaks a rule.
 * Messages quote the name without its chassis prefix.
 *
 * Two properties of the platform are read once and kept for the life of the process: whether names
 * may have an lcc number, in the first call whose chassis prefix is not refused, and
 * parse_pf_attrib, in the first that reads a unit on product 169. First calls from several threads
 * at once are safe.
 *
 * Example:
 *     struct parsed_interface name;
 *     if (parse_interface("eth-1/2/0:3.100", 0, 0, &name, NULL, 0) == 0)
 *         printf("fpc %d, unit %d\n", name.fpc, name.unit);  // fpc 1, unit 100
 */
ORVEX_PARSE_API int parse_interface(const char *name, uint32_t flags, uint32_t mask,
                                    struct parsed_interface *result, char *errbuf, size_t errlen);

/* Room for every chassis name that parse_4_level_chassis accepts, terminator included. */
#define PARSE_CHASSIS_BUFSIZE 129

/*
 * Removes a chassis name and its ":" from the start of an interface name, "lcc0:eth-0/0/0", when a
 * "-" comes somewhere after the first ":" and the platform accepts a prefix on every name or the
 * text has ":mgmt-" in it. A chassis name has 1 to 128 letters and digits of the current locale,
 * "_" and "-"; an empty one is accepted and left in place.
 *
 * `name_ptr`     in and out, required; moved past the ":" when there is a chassis name. A null text
 *                is refused.
 * `chassis_buf`  receives the chassis name, or an empty text when there is none; may be null.
 *                `buf_size` is its size; a buffer of size 0 is never written.
 * `len_out`      receives the length of the chassis name, 0 without one; may be null.
 *
 * Returns 0 with or without a chassis name; -1 when it is too long, not valid, or does not fit into
 * `chassis_buf` with its terminator (an empty one too). Then `*name_ptr` is unchanged, `*len_out`
 * is 0, and `chassis_buf` holds the name that is not valid, or else an empty text. A null text is
 * refused with -1 and leaves every output unchanged.
 */
ORVEX_PARSE_API int parse_4_level_chassis(const char **name_ptr, char *chassis_buf, size_t buf_size,
                                          char *errbuf, size_t errlen, size_t *len_out);

/*
 * Returns the exclusive bound of the PIC numbers (or device numbers) of an interface name: that of
 * a virtual FPC when the number after the first "-" of `name` is one, else the entry's own. `name`,
 * without a chassis prefix, and `entry`, its type's catalogue entry, must not be null.
 */
ORVEX_PARSE_API uint32_t get_fpc_picslots_byname(const char *name,
                                                 const struct interface_info *entry);

/*
 * Attributes of the platform. The library reads them once, when it checks a unit on product 169,
 * and keeps them; a program that sets `loaded` keeps its own. Write them only while no other
 * thread is in parse_interface.
 */
struct platform_attributes {
    uint8_t loaded;          /* 1: read from the platform; initially 0 */
    uint8_t is_l2ng_product; /* not 0: units of every type go up to 1073741823; initially 1 */
    int32_t max_ifl_subunit; /* not 0: the highest unit of the type "at" where neither
                                is_l2ng_product nor the product gives one; initially 0 */
};

ORVEX_PARSE_API extern struct platform_attributes parse_pf_attrib;

/* ---- Interface aliases ----------------------------------------------------------------------- */

/*
 * Checks whether an operator means an interface alias by a word, and not an interface name, an IPv6
 * address or a reserved word (localhost, access-ports, xstp-disabled). An alias has 5 to 128
 * characters: letters and digits of the current locale, "_", ".", ":", "/" and "-", a letter first;
 * and a lower-case letter if it has no "-". A type that the platform knows is no alias, alone, with
 * a device number or unit ("irb.10"), or followed by "-", no letter, and a "/" somewhere
 * ("eth-0/0/0"). `text` must not be null. Returns 1 or 0.
 *
 * Example:
 *     printf("%d\n", is_interface_alias("uplink-to-core"));  // 1
 */
ORVEX_PARSE_API int is_interface_alias(const char *text);

/* Room for every interface name that ifalias_to_ifl copies, terminator included. */
#define IFALIAS_NAME_BUFSIZE 61

/*
 * Looks an alias up in the alias map, /var/etc/if_alias_map, and copies its interface name. A line
 * of the map is an interface name (at most 60 characters count), an alias (128) and a third word,
 * which is not used; lines with fewer words are skipped. The first match counts.
 *
 * `alias`          the alias, not null; at most 128 characters are compared.
 * `dest`           receives the interface name, cut to `dest_size` and terminated, when the alias
 *                  is found; otherwise it is unchanged. A buffer of size 0 is never written.
 * `use_alternate`  not 0 reads /var/etc/if_alias_map+ instead.
 * `stream`         an open stream to read instead, from its start, or null. It is left open, at
 *                  the place where the reading stopped.
 *
 * Returns 1 when the alias was found, 0 otherwise, also when the map cannot be opened or is not a
 * regular file.
 */
ORVEX_PARSE_API int ifalias_to_ifl(const char *alias, char *dest, size_t dest_size,
                                   uint8_t use_alternate, FILE *stream);

/* ---- MAC addresses --------------------------------------------------------------------------- */

/* Flags of parse_mac_addr. Bits that are not listed have no effect. */
#define PARSE_MAC_PREFIX_OK 0x1U      /* "/" and a prefix length may follow the address */
#define PARSE_MAC_UNICAST_ONLY 0x2U   /* the group bit must be clear */
#define PARSE_MAC_MULTICAST_ONLY 0x4U /* the group bit must be set; checked first */

/*
 * Reads an IEEE 802 48-bit MAC address: six groups of one or two hexadecimal digits with "." or ":"
 * between them, freely mixed; after two digits the separator may be missing. Digits pair from the
 * left; a single digit is a group only before a separator, "/" or the end.
 *
 * `address`  receives 6 bytes in transmission order.
 * `pfxseen`  receives 1 when a prefix length was stored, else 0; may be null.
 * `pfxlen`   receives, under PARSE_MAC_PREFIX_OK, the prefix length, 0 to 48, and 48 when none was
 *            given; otherwise it is unchanged. May be null.
 *
 * Returns 0; -1 when the text is no MAC address; -2 when its prefix is not allowed or above 48, or
 * its group bit is refused. On failure `address` holds the groups read so far and zeros; a refused
 * prefix leaves `pfxseen` 0 and `pfxlen` unchanged.
 *
 * Example:
 *     uint8_t address[6];
 *     char text[FORMAT_MAC_BUFSIZE];
 *     if (parse_mac_addr("0:1b:2c3d.4e5f", 0, address, NULL, NULL, NULL, 0) == 0) {
 *         format_mac_addr(text, sizeof text, address, 0, 0);
 *         puts(text);  // 00:1b:2c:3d:4e:5f
 *     }
 */
ORVEX_PARSE_API int parse_mac_addr(const char *text, uint32_t flags, uint8_t *address, int *pfxseen,
                                   uint8_t *pfxlen, char *errbuf, size_t errlen);

/* Room for every text of format_mac_addr, terminator included. */
#define FORMAT_MAC_BUFSIZE 22

/*
 * Writes "00:1b:2c:3d:4e:5f", and "/" with the prefix length when `pfxseen` is not 0. Returns the
 * length of the whole text; when that is not below `buflen` the text is cut.
 */
ORVEX_PARSE_API int format_mac_addr(char *buf, size_t buflen, const uint8_t *address, int pfxseen,
                                    uint8_t pfxlen);

/* ---- Delimited addresses --------------------------------------------------------------------- */

/*
 * Reads an address of `count` bytes as groups of decimal digits, 0 to 255, with "." or ":" between
 * them. Groups may be empty or missing, and are then 0; the text has at most 4 * `count` - 1
 * characters. Note that the error buffer is not last.
 *
 * `bytes`  receives `count` bytes; on failure those read so far and zeros.
 * Returns 0; -1 when the text is refused; -2, without a message, when `count` is 0.
 */
ORVEX_PARSE_API int parse_delim_dec_addr(const char *text, uint8_t *bytes, char *errbuf,
                                         size_t errlen, uint32_t count);

/*
 * Reads exactly `count` hexadecimal groups, written and separated as those of a MAC address.
 * Outputs and results are those of parse_delim_dec_addr.
 */
ORVEX_PARSE_API int parse_delim_hex_addr(const char *text, uint8_t *bytes, char *errbuf,
                                         size_t errlen, uint32_t count);

/* Room for every text of format_delim_addr about `count` bytes, with its NUL and terminator. */
#define FORMAT_DELIM_BUFSIZE(count) (4U * (count) + 1U)

/*
 * Writes `count` bytes with `delimiter` between them: two hexadecimal digits each when `style` is
 * 'x', decimal otherwise; after them a NUL and the terminator. Returns the length of the whole text
 * and the NUL; a buffer of fewer bytes holds the text cut. When `count` is 0, returns 0 and writes
 * nothing.
 *
 * Example:
 *     uint8_t bytes[4];
 *     char text[FORMAT_DELIM_BUFSIZE(sizeof bytes)];
 *     if (parse_delim_hex_addr("0a:1:2:3", bytes, NULL, 0, sizeof bytes) == 0) {
 *         format_delim_addr(text, sizeof text, bytes, '.', sizeof bytes, 'd');
 *         puts(text);  // 10.1.2.3
 *     }
 */
ORVEX_PARSE_API int format_delim_addr(char *buf, size_t buflen, const uint8_t *bytes,
                                      char delimiter, uint32_t count, char style);

/* ---- ISO addresses --------------------------------------------------------------------------- */

/*
 * Checks whether a text looks like an ISO address or prefix: hexadecimal digits, at least 16, with
 * at least four "." and at most one "/". Returns 1 or 0.
 */
ORVEX_PARSE_API int parse_is_iso_addr(const char *text);

/* Flag of parse_iso_addr: a complete address; without it, a prefix. */
#define PARSE_ISO_NSAP 0x1U

/*
 * Reads an ISO NSAP address (ISO/IEC 8348) in the layout of a network entity title (ISO/IEC 10589),
 * "49.0001.1921.6800.1001.00", or without the flag a prefix of one, "49.0001/24". Digits are
 * hexadecimal, "." may separate bytes, and the text has at most 60 characters. An address has 8 to
 * 20 bytes; neither the area address nor the system identifier in it may be all zero. A prefix has
 * at most 38 digits, the last byte one or two of them, and a length of 0 to 152 bits, 0 when
 * nothing follows the "/"; no bit after the length may be set.
 *
 * `bytes`    receives the bytes, and zeros up to its size; or null, when the text is only checked.
 * `count`    in and out: the size of `bytes`, and the number of bytes that the text gave. Required
 *            with `bytes`; without, its value is not read and the text may give 21 bytes.
 * `pfxseen`  receives 1 for a prefix, else 0; may be null.
 * `pfxlen`   receives the length of a prefix; unchanged for an address. May be null.
 *
 * Returns 0; -1 when the text is refused for its form or a bit after the length, also without a
 * message when `count` is missing; -2 when a value is not allowed. On failure the outputs may hold
 * part of the result.
 *
 * Example:
 *     uint8_t bytes[20], count = sizeof bytes;
 *     int pfxseen;
 *     uint16_t pfxlen;
 *     char text[FORMAT_ISO_BUFSIZE];
 *     if (parse_iso_addr("490001/24", 0, bytes, &count, &pfxseen, &pfxlen, NULL, 0) == 0) {
 *         format_iso_addr(bytes, count, pfxseen, pfxlen, text, sizeof text);
 *         puts(text);  // 49.0001/24
 *     }
 */
ORVEX_PARSE_API int parse_iso_addr(const char *text, uint32_t flags, uint8_t *bytes, uint8_t *count,
                                   int *pfxseen, uint16_t *pfxlen, char *errbuf, size_t errlen);

/* Room for every text of format_iso_addr about up to 20 bytes, terminator included. */
#define FORMAT_ISO_BUFSIZE 57

/*
 * Writes `count` bytes as "49.0001.1921", with "." after the first, third, fifth byte and so on but
 * not after the last, or "0" when there are none; `pfxseen` not 0 appends "/" and `pfxlen`, or
 * writes only "0/0" when that is 0. Returns what its last piece (the last byte, the "0" or the
 * prefix length with its "/") used up: its length, or the room that was left when it was cut, 0
 * when there was none.
 */
ORVEX_PARSE_API int format_iso_addr(const uint8_t *bytes, uint8_t count, int pfxseen,
                                    uint16_t pfxlen, char *buf, size_t buflen);

/* Checks whether a text is three groups of one to four hexadecimal digits with "." between them. */
ORVEX_PARSE_API int parse_is_iso_sysid(const char *text);

/*
 * Reads an ISO system identifier (ISO/IEC 10589), "1921.6800.1001": three hexadecimal groups of 16
 * bits. White space, a sign, "0x" and zeros may precede the digits of a group; the text has at most
 * 14 characters.
 *
 * `sysid`  receives 6 bytes, or null, when the text is only checked; on failure it may hold part.
 * `size`   the size of `sysid`; 1 to 5 are refused, any other value means 6 or more.
 * Returns 0; -1 when the text or the size is refused; -2 when the identifier is all zero.
 */
ORVEX_PARSE_API int parse_iso_sysid(const char *text, uint8_t *sysid, int size, char *errbuf,
                                    size_t errlen);

/* Room for every text of format_iso_sysid, terminator included. */
#define FORMAT_ISO_SYSID_BUFSIZE 15

/*
 * Writes 6 bytes as "1921.6800.1001". Returns what the last byte's digits used up: 2, or the room
 * that was left when they were cut, 0 when there was none.
 *
 * Example:
 *     uint8_t sysid[6];
 *     char text[FORMAT_ISO_SYSID_BUFSIZE];
 *     if (parse_iso_sysid("1.a.0100", sysid, sizeof sysid, NULL, 0) == 0) {
 *         format_iso_sysid(sysid, text, sizeof text);
 *         puts(text);  // 0001.000a.0100
 *     }
 */
ORVEX_PARSE_API int format_iso_sysid(const uint8_t *sysid, char *buf, size_t buflen);

/* ---- VPN identifiers ------------------------------------------------------------------------- */

/*
 * Reads a route distinguisher (RFC 4364 section 4.2), administrator:number. The administrator is an
 * AS number of 1 to 65535 ("65000:1", type 0), an IPv4 address as the host's inet_aton reads it
 * ("10.1.1.1:1", type 1), or a four-byte AS number of 1 to 4294967295 ("1.10:1", "4200000000L:1",
 * type 2). The number is decimal digits, none for 0: up to 4294967295 for type 0, where larger ones
 * saturate, up to 65535 otherwise. The first 129 characters of the text count.
 *
 * `type`         receives 0, 1 or 2; on failure it may be written.
 * `high`, `low`  receive the 8 bytes as two numbers, most significant byte first; unchanged on
 *                failure.
 * All three are required. Returns 0, or 1 on failure.
 *
 * Example:
 *     uint32_t type, high, low;
 *     if (parse_inetvpn_rd("10.1.1.1:7", &type, &high, &low, NULL, 0) == 0)
 *         printf("%u %08x %08x\n", type, high, low);  // 1 00010a01 01010007
 */
ORVEX_PARSE_API int parse_inetvpn_rd(const char *text, uint32_t *type, uint32_t *high,
                                     uint32_t *low, char *errbuf, size_t errlen);

/* Modes of parse_esi; any other value is PARSE_ESI_ANY. */
#define PARSE_ESI_ANY 0          /* all values but all zeros and all ones, which are reserved */
#define PARSE_ESI_USER_DEFINED 1 /* and the first octet must be 0 */
#define PARSE_ESI_RESERVED_OK 2  /* every value */

/*
 * Reads an Ethernet Segment Identifier (RFC 7432 section 5): ten hexadecimal octets with ":"
 * between them, where "::" may replace one run of zeros. An octet may have one digit, or leading
 * zeros. Note that the mode is last.
 *
 * `esi`  receives 10 bytes, must not be null; unchanged on failure.
 * Returns 0, or -1 on failure.
 */
ORVEX_PARSE_API int parse_esi(const char *text, uint8_t *esi, char *errbuf, size_t errlen,
                              int mode);

/* Room for every text of format_esi, terminator included. */
#define FORMAT_ESI_BUFSIZE 30

/*
 * Writes "00:11:22:33:44:55:66:77:88:99" and returns 29. A smaller buffer than FORMAT_ESI_BUFSIZE
 * holds the text cut, and its size is returned.
 *
 * Example:
 *     uint8_t esi[10];
 *     char text[FORMAT_ESI_BUFSIZE];
 *     if (parse_esi("0:11::99", esi, NULL, 0, PARSE_ESI_ANY) == 0) {
 *         format_esi(text, sizeof text, esi);
 *         puts(text);  // 00:11:00:00:00:00:00:00:00:99
 *     }
 */
ORVEX_PARSE_API int format_esi(char *buf, size_t buflen, const uint8_t *esi);

/* An ATM VPN address. */
struct atmvpn_address {
    uint32_t reserved; /* never changed */
    uint32_t rd_high;  /* the route distinguisher, as parse_inetvpn_rd gives it */
    uint32_t rd_low;
    uint8_t type;        /* 1 to 255 */
    uint8_t address[23]; /* what the text does not give is zero */
};

/*
 * Checks whether "::" occurs two or three times in a text, not counting its start. Three colons in
 * a row count once, four twice. Returns 1 or 0.
 */
ORVEX_PARSE_API int parse_is_atmvpn(const char *text);

/*
 * Reads an ATM VPN address, rd::type::address or rd::type::address/length, as in
 * "65000:1::5::10.1.2.3/32". The type is 1 to 255. The address is up to 23 bytes, as bytes and IPv4
 * addresses (as the host's inet_aton reads them) with ":" between them. Type and bytes are decimal,
 * octal or hexadecimal as in C. One empty component, also ":::", means the zeros that complete the
 * 23 bytes; one at the end means nothing, and is refused after another. Bits after the prefix must
 * be zero. The first 129 characters of the text count, but parse_is_atmvpn must hold for all of it.
 *
 * `record`  receives the address; may be null. On failure it may be written in part.
 * `pfxlen`  receives the prefix length over the whole key: 72 (route distinguisher and type) more
 *           than the length in the text, 0 to 183, and 255 without one. Unchanged on failure; may
 *           be null.
 * Returns 0, or 1 on failure; without a message when the "/" or the cut removed a "::".
 *
 * Example:
 *     struct atmvpn_address key;
 *     uint32_t pfxlen;
 *     if (parse_atmvpn("65000:1::5::10.1.2.3/32", &key, &pfxlen, NULL, 0) == 0)
 *         printf("type %d, %u bits\n", key.type, pfxlen);  // type 5, 104 bits
 */
ORVEX_PARSE_API int parse_atmvpn(const char *text, struct atmvpn_address *record, uint32_t *pfxlen,
                                 char *errbuf, size_t errlen);

/* ---- Durations ------------------------------------------------------------------------------- */

/*
 * Reads a duration: tokens with white space between them, whose seconds add up. A token is a number
 * of seconds ("90"), numbers with units ("1d2h30m"), or a time ("1:30" is minutes and seconds,
 * "1:00:00" hours too). Numbers have digits only. Units, in any case: s, m, h, d, w, ftn (14 days),
 * cftn (120960 s), mftn (1209.6 s) and uftn (1.2096 s); each fraction of a second is dropped.
 * Numbers and their sum have 64 bits and are refused beyond them. In a time, hours are at most 23,
 * minutes and seconds 59, and an empty field is 0.
 *
 * `seconds`  receives the total, which must be from `min` to `max`; unchanged on failure.
 * Returns 1, or 0 on failure.
 *
 * Example:
 *     uint64_t seconds;
 *     if (decode_dhms("1h30m", 0, UINT64_MAX, &seconds, NULL, 0) == 1)
 *         printf("%u\n", (unsigned)seconds);  // 5400
 */
ORVEX_PARSE_API int decode_dhms(const char *text, uint64_t min, uint64_t max, uint64_t *seconds,
                                char *errbuf, size_t errlen);

/* ---- Version --------------------------------------------------------------------------------- */

/* What this build is: both texts are terminated and fixed for the life of the process. */
struct sw_version_record {
    char release[16]; /* the release, "1.0.0" */
    char build[48];   /* the source revision that it was built from, "unknown" without one */
};

ORVEX_PARSE_API extern const struct sw_version_record sw_version;

#ifdef __cplusplus
}
#endif

#endif
