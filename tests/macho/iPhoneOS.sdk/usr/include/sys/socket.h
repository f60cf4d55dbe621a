#pragma once
#include <sys/types.h>
#include <sys/uio.h>
#define AF_UNSPEC 0
#define AF_UNIX 1
#define AF_INET 2
#define AF_INET6 30
#define SOCK_STREAM 1
#define SOCK_DGRAM 2
#define SOL_SOCKET 0xffff
#define SO_REUSEADDR 0x0004
#define SO_KEEPALIVE 0x0008
#define SO_LINGER 0x0080
#define SO_ERROR 0x1007
#define SO_NOSIGPIPE 0x1022
#define SOMAXCONN 128
#define SHUT_RD 0
#define SHUT_WR 1
#define SHUT_RDWR 2
#define MSG_PEEK 0x2
#define MSG_DONTWAIT 0x80
typedef uint8_t sa_family_t;
typedef uint32_t socklen_t;
struct sockaddr {
  uint8_t sa_len;
  sa_family_t sa_family;
  char sa_data[14];
};
struct sockaddr_storage {
  uint8_t ss_len;
  sa_family_t ss_family;
  uint8_t address[6];
  uint64_t more[15];
};
struct linger {
  int l_onoff, l_linger;
};
__BEGIN_DECLS
int accept(int, struct sockaddr*, socklen_t*);
int bind(int, const struct sockaddr*, socklen_t);
int connect(int, const struct sockaddr*, socklen_t);
int getpeername(int, struct sockaddr*, socklen_t*);
int getsockname(int, struct sockaddr*, socklen_t*);
int getsockopt(int, int, int, void*, socklen_t*);
int listen(int, int);
ssize_t recv(int, void*, size_t, int);
ssize_t send(int, const void*, size_t, int);
int setsockopt(int, int, int, const void*, socklen_t);
int shutdown(int, int);
int socket(int, int, int);
int socketpair(int, int, int, int[2]);
__END_DECLS
