#include "gl_recording_hooks_win.h"

#include <array>
#include <string>
#include <utility>

#include "gl_recording_win.h"
#include "support/faked_import_win.h"

namespace {

GlRecording* current = nullptr;

/// The imports that are hooked at present, with the functions to restore.
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

/// Copies an argument for the recording.
template <class Value>
Value Keep(Value value) {
    return value;
}
// All float arrays that the library passes are colours or points of 4 numbers.
std::array<float, 4> Keep(const float* values) { return Copy<4>(values); }
// All double arrays are matrices, which GLU passes.
std::array<double, 16> Keep(const double* values) { return Copy<16>(values); }

template <class Value>
Value Give(const Value& value) {
    return value;
}
template <class Number, std::size_t Size>
const Number* Give(const std::array<Number, Size>& values) {
    return values.data();
}

/// The hook of a command that is recorded with copies of its arguments.
template <FunctionName Name, class Signature>
struct Hook;
template <FunctionName Name, class Result, class... Arguments>
struct Hook<Name, Result(Arguments...)> {
    static inline Result(APIENTRY* real)(Arguments...) = nullptr;
    static Result APIENTRY Call(Arguments... arguments) {
        current->Add([... kept = Keep(arguments)](HDC) { real(Give(kept)...); });
        return real(arguments...);
    }
};

/// The hook of one of the commands that make a vertex: normal, texture coordinate or position.
template <FunctionName Name, char Kind, class Signature>
struct PartHook;
template <FunctionName Name, char Kind, class Number, class... Rest>
struct PartHook<Name, Kind, void(Number, Rest...)> {
    static inline void(APIENTRY* real)(Number, Rest...) = nullptr;
    static void APIENTRY Call(Number first, Rest... rest) {
        const Number values[] = {first, rest...};
        current->AddPart(Kind, values, std::size(values));
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
        current->Add([count, type, bytes](HDC) { real(count, type, bytes.data()); });
        real(count, type, names);
    }
};

struct SwapHook {
    static inline decltype(&SwapBuffers) real = nullptr;
    static BOOL WINAPI Call(HDC dc) {
        current->Add([](HDC own) { real(own); });
        return real(dc);
    }
};

#define RECORD(function) \
    Install<Hook<#function, decltype(::function)>>(modules, #function, ::function)
#define RECORD_PART(function, kind) \
    Install<PartHook<#function, kind, decltype(::function)>>(modules, #function, ::function)

void HookAll(const std::vector<HMODULE>& modules) {
    RECORD_PART(glNormal3f, 'n');
    RECORD_PART(glTexCoord2f, 't');
    RECORD_PART(glVertex3f, 'v');
    RECORD_PART(glNormal3d, 'N');
    RECORD_PART(glVertex3d, 'V');
    RECORD_PART(glTexCoord2d, 'T');
    Install<CallListsHook>(modules, "glCallLists", glCallLists);
    Install<SwapHook>(modules, "SwapBuffers", SwapBuffers);
    RECORD(glBegin);
    RECORD(glBindTexture);
    RECORD(glBlendFunc);
    RECORD(glCallList);
    RECORD(glClear);
    RECORD(glClearColor);
    RECORD(glColor3d);
    RECORD(glColor3f);
    RECORD(glColor4d);
    RECORD(glColor4f);
    RECORD(glDisable);
    RECORD(glEnable);
    RECORD(glEnd);
    RECORD(glEndList);
    RECORD(glFlush);
    RECORD(glGetString);
    RECORD(glIsEnabled);
    RECORD(glLightModelfv);
    RECORD(glLightModeli);
    RECORD(glLightfv);
    RECORD(glLighti);
    RECORD(glListBase);
    RECORD(glLoadIdentity);
    RECORD(glMaterialfv);
    RECORD(glMateriali);
    RECORD(glMatrixMode);
    RECORD(glMultMatrixd);
    RECORD(glNewList);
    RECORD(glOrtho);
    RECORD(glPointSize);
    RECORD(glPolygonMode);
    RECORD(glPopMatrix);
    RECORD(glPushMatrix);
    RECORD(glRasterPos3f);
    RECORD(glRotated);
    RECORD(glRotatef);
    RECORD(glTexEnvfv);
    RECORD(glTexEnvi);
    RECORD(glTexParameteri);
    RECORD(glTranslatef);
    RECORD(glVertex2d);
    RECORD(glVertex2f);
    RECORD(glViewport);
}

#undef RECORD
#undef RECORD_PART

}  // namespace

GlRecordingHooks::GlRecordingHooks(GlRecording& recording, const std::vector<HMODULE>& modules) {
    current = &recording;
    HookAll(modules);
}

GlRecordingHooks::~GlRecordingHooks() {
    for (const HookedImport& import : hooked) {
        ReplaceImport(import.module, import.name, import.before);
    }
    hooked.clear();
    current = nullptr;
}
