#pragma once
#define TCP_NODELAY 0x01
#define TCP_KEEPALIVE 0x10
#define TCP_KEEPINTVL 0x101
#define TCP_KEEPCNT 0x102
