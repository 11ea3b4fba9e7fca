/* What a fuzz target has besides its entry, which libFuzzer names. */
#ifndef FUZZ_H
#define FUZZ_H

#include <stddef.h>
#include <stdint.h>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
void describe_call(void);             /* on stderr: what is being called */
extern unsigned long long calls_made; /* so far */

#endif
