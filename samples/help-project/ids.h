// Numbers for context help, shared with the program.
#define IDH_WELCOME 1000
#define IDH_IMPORT 1010
#define IDH_ALBUMS 1020
#define IDH_TAGS 1030
#define IDH_LIGHT 1040
#define IDH_PRINT 1050
