#pragma once
#include <sys/socket.h>
#define IPPROTO_TCP 6
#define IPPROTO_IPV6 41
#define IPV6_V6ONLY 27
#define INADDR_ANY ((uint32_t)0x00000000)
#define INADDR_LOOPBACK ((uint32_t)0x7f000001)
#define INET_ADDRSTRLEN 16
#define INET6_ADDRSTRLEN 46
typedef uint16_t in_port_t;
typedef uint32_t in_addr_t;
struct in_addr {
  in_addr_t s_addr;
};
struct in6_addr {
  uint8_t s6_addr[16];
};
struct sockaddr_in {
  uint8_t sin_len;
  sa_family_t sin_family;
  in_port_t sin_port;
  struct in_addr sin_addr;
  char sin_zero[8];
};
struct sockaddr_in6 {
  uint8_t sin6_len;
  sa_family_t sin6_family;
  in_port_t sin6_port;
  uint32_t sin6_flowinfo;
  struct in6_addr sin6_addr;
  uint32_t sin6_scope_id;
};
__BEGIN_DECLS
extern const struct in6_addr in6addr_any;
extern const struct in6_addr in6addr_loopback;
__END_DECLS
#define htons(value) __builtin_bswap16((uint16_t)(value))
#define ntohs(value) __builtin_bswap16((uint16_t)(value))
#define htonl(value) __builtin_bswap32((uint32_t)(value))
#define ntohl(value) __builtin_bswap32((uint32_t)(value))
