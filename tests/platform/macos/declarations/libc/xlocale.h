// The functions of the C library that take a locale, of which musl has only some.
#pragma once

#include <ctype.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <wchar.h>
#include <wctype.h>

#define _CTYPE_A 0x00000100
#define _CTYPE_C 0x00000200
#define _CTYPE_D 0x00000400
#define _CTYPE_L 0x00001000
#define _CTYPE_P 0x00002000
#define _CTYPE_S 0x00004000
#define _CTYPE_U 0x00008000
#define _CTYPE_X 0x00010000
#define _CTYPE_B 0x00020000
#define _CTYPE_R 0x00040000

#define MB_CUR_MAX_L(locale) 4

extern "C" {

int snprintf_l(char* buffer, size_t size, locale_t locale, const char* format, ...);
int asprintf_l(char** text, locale_t locale, const char* format, ...);
int sscanf_l(const char* text, locale_t locale, const char* format, ...);
double strtod_l(const char* text, char** end, locale_t locale);
float strtof_l(const char* text, char** end, locale_t locale);
long double strtold_l(const char* text, char** end, locale_t locale);
long long strtoll_l(const char* text, char** end, int base, locale_t locale);
unsigned long long strtoull_l(const char* text, char** end, int base, locale_t locale);
size_t mbrtowc_l(wchar_t* wide, const char* bytes, size_t count, mbstate_t* state, locale_t locale);
size_t wcrtomb_l(char* bytes, wchar_t wide, mbstate_t* state, locale_t locale);
wint_t btowc_l(int byte, locale_t locale);
int wctob_l(wint_t wide, locale_t locale);
struct lconv* localeconv_l(locale_t locale);
}
