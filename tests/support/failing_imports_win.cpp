#include "support/failing_imports_win.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <vector>

#include "support/faked_import_win.h"

namespace {

/// Machine code of one gate. It keeps all argument registers, asks which way to go and jumps there.
class CodeWriter {
public:
    explicit CodeWriter(std::uint8_t* at) : at_(at) {}
    void Bytes(std::initializer_list<int> bytes) {
        for (const int byte : bytes) *at_++ = static_cast<std::uint8_t>(byte);
    }
    void Address(const void* address) {
        std::memcpy(at_, &address, sizeof address);
        at_ += sizeof address;
    }
    void Number(std::uint64_t number) {
        std::memcpy(at_, &number, sizeof number);
        at_ += sizeof number;
    }

private:
    std::uint8_t* at_;
};

constexpr std::size_t kGateBytes = 160;
constexpr std::size_t kFailBytes = 16;

void WriteGate(std::uint8_t* code, const void* entry, const void* decide) {
    CodeWriter out(code);
    out.Bytes({0x51, 0x52, 0x41, 0x50, 0x41, 0x51});  // push rcx, rdx, r8, r9
    out.Bytes({0x48, 0x83, 0xEC, 0x68});              // sub rsp, 0x68
    for (int i = 0; i < 4; ++i)                       // movups [rsp + 0x20 + 16 i], xmm i
        out.Bytes({0x0F, 0x11, 0x44 + 8 * i, 0x24, 0x20 + 16 * i});
    out.Bytes({0x48, 0xB9});  // mov rcx, entry
    out.Address(entry);
    out.Bytes({0x48, 0xB8});  // mov rax, decide
    out.Address(decide);
    out.Bytes({0xFF, 0xD0});     // call rax
    for (int i = 0; i < 4; ++i)  // movups xmm i, [rsp + 0x20 + 16 i]
        out.Bytes({0x0F, 0x10, 0x44 + 8 * i, 0x24, 0x20 + 16 * i});
    out.Bytes({0x48, 0x83, 0xC4, 0x68});              // add rsp, 0x68
    out.Bytes({0x41, 0x59, 0x41, 0x58, 0x5A, 0x59});  // pop r9, r8, rdx, rcx
    out.Bytes({0xFF, 0xE0});                          // jmp rax
}

void WriteFailure(std::uint8_t* code, std::uint64_t result) {
    CodeWriter out(code);
    out.Bytes({0x48, 0xB8});  // mov rax, result
    out.Number(result);
    out.Bytes({0xC3});  // ret
}

}  // namespace

struct FailingImports::Gate {
    struct Entry {
        Gate* gate = nullptr;
        ImportFailure failure = {};
        void* real = nullptr;
        const void* fail = nullptr;
    };

    static const void* Decide(Entry* entry) {
        Gate& gate = *entry->gate;
        const int number = ++gate.calls;
        if (number < gate.from || number >= gate.until) return entry->real;
        const char* none = nullptr;
        gate.failed.compare_exchange_strong(none, entry->failure.function);
        SetLastError(entry->failure.lastError);
        return entry->fail;
    }

    HMODULE module = nullptr;
    std::uint8_t* code = nullptr;
    std::vector<Entry> entries;
    std::atomic<int> calls = 0;
    std::atomic<int> from = 0;
    std::atomic<int> until = 0;
    std::atomic<const char*> failed = nullptr;
};

FailingImports::FailingImports(HMODULE module, std::span<const ImportFailure> functions)
    : gate_(std::make_unique<Gate>()) {
    gate_->module = module;
    gate_->entries.resize(functions.size());
    gate_->code = static_cast<std::uint8_t*>(
        VirtualAlloc(nullptr, functions.size() * (kGateBytes + kFailBytes),
                     MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
    std::uint8_t* code = gate_->code;
    for (std::size_t i = 0; i < functions.size(); ++i, code += kGateBytes + kFailBytes) {
        Gate::Entry& entry = gate_->entries[i];
        WriteGate(code, &entry, reinterpret_cast<const void*>(&Gate::Decide));
        WriteFailure(code + kGateBytes, functions[i].result);
        entry = {gate_.get(), functions[i], nullptr, code + kGateBytes};
        entry.real = ReplaceImport(module, functions[i].function, code);
    }
}

FailingImports::~FailingImports() {
    HMODULE loaded = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<LPCWSTR>(gate_->module), &loaded);
    for (const Gate::Entry& entry : gate_->entries) {
        if (loaded != nullptr && entry.real != nullptr)
            ReplaceImport(gate_->module, entry.failure.function, entry.real);
    }
    VirtualFree(gate_->code, 0, MEM_RELEASE);
}

void FailingImports::FailFrom(int number, int count) {
    gate_->calls = 0;
    gate_->failed = nullptr;
    gate_->from = number;
    gate_->until = number + count;
}

void FailingImports::Stop() { gate_->until = 0; }

int FailingImports::Calls() const { return gate_->calls; }
const char* FailingImports::Failed() const { return gate_->failed; }
