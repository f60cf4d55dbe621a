#pragma once
#include <stdarg.h>
#include <sys/types.h>

typedef struct stream FILE;
typedef int64_t fpos_t;
#define BUFSIZ 1024
#define EOF (-1)
#define FILENAME_MAX 1024
#define FOPEN_MAX 20
#define L_tmpnam 1024
#define TMP_MAX 308915776
#define SEEK_SET 0
#define SEEK_CUR 1
#define SEEK_END 2
#define _IOFBF 0
#define _IOLBF 1
#define _IONBF 2

__BEGIN_DECLS
void clearerr(FILE*);
int fclose(FILE*);
int feof(FILE*);
int ferror(FILE*);
int fflush(FILE*);
int fgetc(FILE*);
int fgetpos(FILE*, fpos_t*);
char* fgets(char*, int, FILE*);
FILE* fdopen(int, const char*);
FILE* fopen(const char*, const char*);
int fprintf(FILE*, const char*, ...) __attribute__((format(printf, 2, 3)));
int fputc(int, FILE*);
int fputs(const char*, FILE*);
size_t fread(void*, size_t, size_t, FILE*);
FILE* freopen(const char*, const char*, FILE*);
int fscanf(FILE*, const char*, ...);
int fseek(FILE*, long, int);
int fseeko(FILE*, off_t, int);
int fsetpos(FILE*, const fpos_t*);
long ftell(FILE*);
off_t ftello(FILE*);
size_t fwrite(const void*, size_t, size_t, FILE*);
int getc(FILE*);
int getchar(void);
void perror(const char*);
int printf(const char*, ...) __attribute__((format(printf, 1, 2)));
int putc(int, FILE*);
int putchar(int);
int puts(const char*);
int remove(const char*);
int rename(const char*, const char*);
void rewind(FILE*);
int scanf(const char*, ...);
void setbuf(FILE*, char*);
int setvbuf(FILE*, char*, int, size_t);
int snprintf(char*, size_t, const char*, ...) __attribute__((format(printf, 3, 4)));
int sprintf(char*, const char*, ...) __attribute__((format(printf, 2, 3)));
int sscanf(const char*, const char*, ...);
FILE* tmpfile(void);
char* tmpnam(char*);
int ungetc(int, FILE*);
int vfprintf(FILE*, const char*, va_list) __attribute__((format(printf, 2, 0)));
int vfscanf(FILE*, const char*, va_list);
int vprintf(const char*, va_list) __attribute__((format(printf, 1, 0)));
int vscanf(const char*, va_list);
int vsnprintf(char*, size_t, const char*, va_list) __attribute__((format(printf, 3, 0)));
int vsprintf(char*, const char*, va_list) __attribute__((format(printf, 2, 0)));
int vsscanf(const char*, const char*, va_list);
int vasprintf(char**, const char*, va_list) __attribute__((format(printf, 2, 0)));
__END_DECLS
