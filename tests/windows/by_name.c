/* by_name DLL
 * A program that knows the library only by the names of its exports, as programs in other languages do: loads it,
 * calls every function with a card that does not exist, and checks the answer, that the function took exactly its
 * arguments off the stack, and that the registers a caller relies on are as they were. Then unloads the library, and
 * all of it again. */
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <windows.h>

struct function {
    const char *name;
    int stack_bytes;
    int refuses_card;
};

static const struct function functions[] = {
#include "function_table.inc"
};

enum { no_such_card = 0xEE, err_card = 300, most_words = 32 };

/* What a call leaves behind. */
struct outcome {
    uint32_t result;
    int32_t left_on_stack; /* bytes */
    int registers_kept;
};

static struct outcome call(FARPROC function, const uint32_t *words, int count)
{
    struct {
        const uint32_t *words;
        FARPROC function;
        uint32_t count, stack_before, stack_after, ebx, esi, edi, ebp_before, ebp_after;
    } frame = {words, function, (uint32_t)count, 0, 0, 0, 0, 0, 0, 0};
    uint32_t result = (uint32_t)(uintptr_t)&frame; /* in eax: the frame */
    __asm__ volatile("pushl %%ebx\n\tpushl %%esi\n\tpushl %%edi\n\tpushl %%ebp\n\t"
                     "pushl %%eax\n\t" /* the frame, found again below the arguments */
                     "movl %%esp, %%edi\n\t"
                     "movl %%esp, 12(%%eax)\n\t"
                     "movl %%ebp, 32(%%eax)\n\t"
                     "movl 0(%%eax), %%esi\n\t"
                     "movl 8(%%eax), %%ecx\n"
                     "1:\tjecxz 2f\n\tpushl -4(%%esi,%%ecx,4)\n\tdecl %%ecx\n\tjmp 1b\n"
                     "2:\tmovl $0x5EB5EB5E, %%ebx\n\tmovl $0x0E510E51, %%esi\n\t"
                     "call *4(%%eax)\n\t"
                     "movl (%%edi), %%ecx\n\t" /* edi must have been kept */
                     "movl %%esp, 16(%%ecx)\n\t"
                     "movl %%ebx, 20(%%ecx)\n\tmovl %%esi, 24(%%ecx)\n\tmovl %%edi, 28(%%ecx)\n\t"
                     "movl %%ebp, 36(%%ecx)\n\t"
                     "movl %%edi, %%esp\n\t"
                     "addl $4, %%esp\n\t"
                     "popl %%ebp\n\tpopl %%edi\n\tpopl %%esi\n\tpopl %%ebx"
                     : "+a"(result)
                     :
                     : "ecx", "edx", "memory", "cc");
    struct outcome outcome;
    outcome.result = result;
    outcome.left_on_stack = (int32_t)(frame.stack_before - frame.stack_after);
    outcome.registers_kept = frame.ebx == 0x5EB5EB5E && frame.esi == 0x0E510E51 &&
                             frame.edi == frame.stack_before && frame.ebp_before == frame.ebp_after;
    return outcome;
}

static int faults_of(HMODULE library, const struct function *function)
{
    const FARPROC address = GetProcAddress(library, function->name);
    uint32_t words[most_words];
    struct outcome outcome;
    if (address == NULL) {
        printf("%s: not exported\n", function->name);
        return 1;
    }
    memset(words, 0, sizeof words);
    words[0] = no_such_card; /* for a function without a card: any number but 1 */
    outcome = call(address, words, function->stack_bytes / 4);
    if (outcome.left_on_stack == 0 && outcome.registers_kept &&
        (!function->refuses_card || outcome.result == err_card))
        return 0;
    printf("%s: result %u, %d bytes left on the stack, registers %s\n", function->name, (unsigned)outcome.result,
           (int)outcome.left_on_stack, outcome.registers_kept ? "kept" : "lost");
    return 1;
}

int main(int argc, char **argv)
{
    const int count = (int)(sizeof functions / sizeof functions[0]);
    int faults = 0;
    int round;
    int at;
    for (round = 0; round < 2; ++round) {
        const HMODULE library = LoadLibraryA(argc == 2 ? argv[1] : "TrevikA.dll");
        if (library == NULL) {
            printf("the library cannot be loaded: error %lu\n", GetLastError());
            return 1;
        }
        for (at = 0; at < count; ++at)
            faults += faults_of(library, &functions[at]);
        FreeLibrary(library);
    }
    printf("\nby_name: %d functions, %d faults\n", count, faults);
    return faults == 0 ? 0 : 1;
}
