#pragma once
#include <sys/types.h>
struct sockaddr_un {
  unsigned char sun_len;
  uint8_t sun_family;
  char sun_path[104];
};
