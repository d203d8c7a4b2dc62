#pragma once

#ifndef TREVIK_TOOLS_VERSION
#define TREVIK_TOOLS_VERSION "0.1.0" // the build gives the project's version
#endif
