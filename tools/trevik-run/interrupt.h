// Ctrl-C and termination as a flag that the executor looks at.
#pragma once

namespace trevik_run
{

void CatchInterrupts();
bool Interrupted();
void SetInterrupted(bool interrupted);

} // namespace trevik_run
