#pragma once
#include <sys/types.h>
#include <time.h>
struct stat {
  dev_t st_dev;
  mode_t st_mode;
  nlink_t st_nlink;
  ino_t st_ino;
  uid_t st_uid;
  gid_t st_gid;
  dev_t st_rdev;
  struct timespec st_atimespec, st_mtimespec, st_ctimespec, st_birthtimespec;
  off_t st_size;
  int64_t st_blocks;
  int32_t st_blksize;
  uint32_t st_flags, st_gen;
  int32_t st_lspare;
  int64_t st_qspare[2];
};
__BEGIN_DECLS
#ifdef __x86_64__  // which had another structure once, with short inode numbers
int fstat(int, struct stat*) __asm("_fstat$INODE64");
#else
int fstat(int, struct stat*);
#endif
int mkdir(const char*, mode_t);
__END_DECLS
