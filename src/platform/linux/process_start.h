// What a program of ours sees to before anything else.
#pragma once

namespace platform_linux {

// To be called before anything else opens a file: standard input, output and error that whoever started the program has
// closed lead nowhere from then on, instead of into the first file opened. A broken pipe and a file that grows too
// large become errors instead of the end of the process.
void prepareProcess();

}  // namespace platform_linux
