#ifndef KELCORE_MENUS_WIN32_KELWIN32HANDLES_H
#define KELCORE_MENUS_WIN32_KELWIN32HANDLES_H

// Windows build only. The system's handle and record types that the native menu classes take,
// declared exactly as <windows.h> declares them (with STRICT handles, its default), so that these
// headers and the umbrella header do not bring in <windows.h> and its macros (min, max, ...),
// which would break calls such as a list's min(). Code that calls them includes <windows.h>.

struct HMENU__;
typedef HMENU__* HMENU;
struct HICON__;
typedef HICON__* HICON;
struct HBITMAP__;
typedef HBITMAP__* HBITMAP;
struct tagSIZE;
typedef tagSIZE SIZE;
struct tagRGBQUAD;
typedef tagRGBQUAD RGBQUAD;

#endif
