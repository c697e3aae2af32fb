// The log line goes through NSLog, always as an argument: a text may hold percent signs.
#include "platform/system_log.h"

#import <Foundation/Foundation.h>

namespace zkt {

void WriteSystemLog(const char* text) { NSLog(@"%s\n", text); }

void WriteSystemLog(const char* label, CFStringRef text) { NSLog(@"%s: %@\n", label, (__bridge NSString*)text); }

}  // namespace zkt
