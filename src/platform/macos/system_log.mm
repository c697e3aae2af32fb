// Writes log lines through NSLog. A line is always passed as an argument, never as the format, because it may contain
// percent signs.
#include "platform/system_log.h"

#import <Foundation/Foundation.h>

namespace zkt {

void WriteSystemLog(const char* text) {
  // NSLog interprets a %s argument in the system's 8-bit encoding, which would garble UTF-8.
  NSString* const line = [[NSString alloc] initWithUTF8String:text];
  if (line != nil)
    NSLog(@"%@\n", line);
  else
    NSLog(@"%s\n", text);
  [line release];
}

void WriteSystemLog(const char* label, CFStringRef text) { NSLog(@"%s: %@\n", label, (__bridge NSString*)text); }

}  // namespace zkt
