#include "gl_tape_win.h"

#include <array>
#include <cctype>
#include <utility>

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

void UnhookAll() {
    for (const HookedImport& import : hooked) {
        ReplaceImport(import.module, import.name, import.before);
    }
    hooked.clear();
}

/// Any pattern, call by call: for the few vertices of overlays.
void PlayMixedRun(const VertexRun& run) {
    const float* f = run.floats.data();
    const double* d = run.doubles.data();
    for (std::size_t i = 0; i < run.count; ++i) {
        for (const char kind : run.pattern) {
            if (kind == 'n') glNormal3f(f[0], f[1], f[2]);
            if (kind == 't') glTexCoord2f(f[0], f[1]);
            if (kind == 'v') glVertex3f(f[0], f[1], f[2]);
            if (kind == 'N') glNormal3d(d[0], d[1], d[2]);
            if (kind == 'T') glTexCoord2d(d[0], d[1]);
            if (kind == 'V') glVertex3d(d[0], d[1], d[2]);
            f += kind == 't' ? 2 : std::islower(kind) != 0 ? 3 : 0;
            d += kind == 'T' ? 2 : std::isupper(kind) != 0 ? 3 : 0;
        }
    }
}

void PlayRun(const VertexRun& run) {
    const float* f = run.floats.data();
    const double* d = run.doubles.data();
    if (run.pattern == "ntv") {
        for (std::size_t i = 0; i < run.count; ++i, f += 8) {
            glNormal3f(f[0], f[1], f[2]);
            glTexCoord2f(f[3], f[4]);
            glVertex3f(f[5], f[6], f[7]);
        }
    } else if (run.pattern == "nv") {
        for (std::size_t i = 0; i < run.count; ++i, f += 6) {
            glNormal3f(f[0], f[1], f[2]);
            glVertex3f(f[3], f[4], f[5]);
        }
    } else if (run.pattern == "NV") {
        for (std::size_t i = 0; i < run.count; ++i, d += 6) {
            glNormal3d(d[0], d[1], d[2]);
            glVertex3d(d[3], d[4], d[5]);
        }
    } else {
        PlayMixedRun(run);
    }
}

}  // namespace

void GlTape::Record(const std::vector<HMODULE>& modules, const std::function<void()>& road) {
    recording = this;
    steps_.clear();
    size_ = 0;
    HookAll(modules);
    road();
    UnhookAll();
    recording = nullptr;
}

void GlTape::Play(HDC dc) const {
    for (const Step& step : steps_) {
        if (step.command) {
            step.command(dc);
        } else {
            PlayRun(step.run);
        }
    }
}

void GlTape::Add(std::function<void(HDC)> command) {
    ++size_;
    steps_.push_back({std::move(command), {}});
}

void GlTape::AddPart(char kind, const float* values, std::size_t count) {
    vertex_.floats.insert(vertex_.floats.end(), values, values + count);
    EndVertexAt(kind);
}

void GlTape::AddPart(char kind, const double* values, std::size_t count) {
    vertex_.doubles.insert(vertex_.doubles.end(), values, values + count);
    EndVertexAt(kind);
}

void GlTape::EndVertexAt(char kind) {
    ++size_;
    vertex_.pattern += kind;
    if (kind != 'v' && kind != 'V') return;
    if (steps_.empty() || steps_.back().command || steps_.back().run.pattern != vertex_.pattern) {
        steps_.push_back({nullptr, {vertex_.pattern, {}, {}, 0}});
    }
    VertexRun& run = steps_.back().run;
    run.floats.insert(run.floats.end(), vertex_.floats.begin(), vertex_.floats.end());
    run.doubles.insert(run.doubles.end(), vertex_.doubles.begin(), vertex_.doubles.end());
    ++run.count;
    vertex_ = {};
}
