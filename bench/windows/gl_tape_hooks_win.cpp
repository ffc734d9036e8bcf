#include "gl_tape_hooks_win.h"

#include <array>
#include <string>
#include <utility>

#include "gl_tape_win.h"
#include "support/faked_import_win.h"

namespace {

GlTape* recording = nullptr;

/// Modules whose imports are hooked now, to be put right again.
struct HookedImport {
    HMODULE module;
    std::string_view name;
    void* before;
};
std::vector<HookedImport> hooked;

template <std::size_t Size, class Number>
std::array<Number, Size> Copy(const Number* values) {
    std::array<Number, Size> copy;
    std::copy_n(values, Size, copy.begin());
    return copy;
}

/// An argument as the tape keeps it.
template <class Value>
Value Keep(Value value) {
    return value;
}
// All float arrays that the library hands over are colours or points.
std::array<float, 4> Keep(const float* values) { return Copy<4>(values); }
// And all of doubles are GLU's matrices.
std::array<double, 16> Keep(const double* values) { return Copy<16>(values); }

template <class Value>
Value Give(const Value& value) {
    return value;
}
template <class Number, std::size_t Size>
const Number* Give(const std::array<Number, Size>& values) {
    return values.data();
}

/// A command whose arguments are kept as they are.
template <FunctionName Name, class Signature>
struct Hook;
template <FunctionName Name, class Result, class... Arguments>
struct Hook<Name, Result(Arguments...)> {
    static inline Result(APIENTRY* real)(Arguments...) = nullptr;
    static Result APIENTRY Call(Arguments... arguments) {
        recording->Add([... kept = Keep(arguments)](HDC) { real(Give(kept)...); });
        return real(arguments...);
    }
};

/// One of the calls that make a vertex.
template <FunctionName Name, char Kind, class Signature>
struct PartHook;
template <FunctionName Name, char Kind, class Number, class... Rest>
struct PartHook<Name, Kind, void(Number, Rest...)> {
    static inline void(APIENTRY* real)(Number, Rest...) = nullptr;
    static void APIENTRY Call(Number first, Rest... rest) {
        const Number values[] = {first, rest...};
        recording->AddPart(Kind, values, std::size(values));
        real(first, rest...);
    }
};

template <class Spy, class Function>
void Install(const std::vector<HMODULE>& modules, std::string_view name, Function*) {
    for (HMODULE module : modules) {
        void* before = ReplaceImport(module, name, reinterpret_cast<void*>(&Spy::Call));
        if (before == nullptr) continue;
        Spy::real = reinterpret_cast<Function*>(before);
        hooked.push_back({module, name, before});
    }
}

struct CallListsHook {
    static inline decltype(&glCallLists) real = nullptr;
    static void APIENTRY Call(GLsizei count, GLenum type, const void* names) {
        std::string bytes(static_cast<const char*>(names), static_cast<std::size_t>(count));
        recording->Add([count, type, bytes](HDC) { real(count, type, bytes.data()); });
        real(count, type, names);
    }
};

struct SwapHook {
    static inline decltype(&SwapBuffers) real = nullptr;
    static BOOL WINAPI Call(HDC dc) {
        recording->Add([](HDC own) { real(own); });
        return real(dc);
    }
};

#define TAPE(function) \
    Install<Hook<#function, decltype(::function)>>(modules, #function, ::function)
#define TAPE_PART(function, kind) \
    Install<PartHook<#function, kind, decltype(::function)>>(modules, #function, ::function)

void HookAll(const std::vector<HMODULE>& modules) {
    TAPE_PART(glNormal3f, 'n');
    TAPE_PART(glTexCoord2f, 't');
    TAPE_PART(glVertex3f, 'v');
    TAPE_PART(glNormal3d, 'N');
    TAPE_PART(glVertex3d, 'V');
    TAPE_PART(glTexCoord2d, 'T');
    Install<CallListsHook>(modules, "glCallLists", glCallLists);
    Install<SwapHook>(modules, "SwapBuffers", SwapBuffers);
    TAPE(glBegin);
    TAPE(glBindTexture);
    TAPE(glBlendFunc);
    TAPE(glCallList);
    TAPE(glClear);
    TAPE(glClearColor);
    TAPE(glColor3d);
    TAPE(glColor3f);
    TAPE(glColor4d);
    TAPE(glColor4f);
    TAPE(glDisable);
    TAPE(glEnable);
    TAPE(glEnd);
    TAPE(glEndList);
    TAPE(glFlush);
    TAPE(glGetString);
    TAPE(glIsEnabled);
    TAPE(glLightModelfv);
    TAPE(glLightModeli);
    TAPE(glLightfv);
    TAPE(glLighti);
    TAPE(glListBase);
    TAPE(glLoadIdentity);
    TAPE(glMaterialfv);
    TAPE(glMateriali);
    TAPE(glMatrixMode);
    TAPE(glMultMatrixd);
    TAPE(glNewList);
    TAPE(glOrtho);
    TAPE(glPointSize);
    TAPE(glPolygonMode);
    TAPE(glPopMatrix);
    TAPE(glPushMatrix);
    TAPE(glRasterPos3f);
    TAPE(glRotated);
    TAPE(glRotatef);
    TAPE(glTexEnvfv);
    TAPE(glTexEnvi);
    TAPE(glTexParameteri);
    TAPE(glTranslatef);
    TAPE(glVertex2d);
    TAPE(glVertex2f);
    TAPE(glViewport);
}

#undef TAPE
#undef TAPE_PART

}  // namespace

GlTapeHooks::GlTapeHooks(GlTape& tape, const std::vector<HMODULE>& modules) {
    recording = &tape;
    HookAll(modules);
}

GlTapeHooks::~GlTapeHooks() {
    for (const HookedImport& import : hooked) {
        ReplaceImport(import.module, import.name, import.before);
    }
    hooked.clear();
    recording = nullptr;
}
