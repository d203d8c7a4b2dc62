#pragma once

#ifndef TREVIK_RUN_VERSION
#define TREVIK_RUN_VERSION "0.1.0" // the build gives the project's version
#endif
