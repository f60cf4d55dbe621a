#pragma once
#include <stddef.h>
#include <stdint.h>
#include <sys/cdefs.h>

typedef uint32_t __uint32_t;  // what libc++ calls it
typedef uint32_t gid_t;
typedef int32_t id_t;
typedef uint64_t ino_t;
typedef uint16_t mode_t;
typedef uint16_t nlink_t;
typedef int64_t off_t;
typedef int32_t pid_t;
typedef long ssize_t;
typedef uint32_t uid_t;
typedef int32_t dev_t;
typedef int32_t suseconds_t;
typedef uint32_t useconds_t;
typedef long time_t;
typedef unsigned long clock_t;
