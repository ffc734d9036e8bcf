#include "globe/planet.h"

#include "render/list_name.h"

namespace {

constexpr float kGlobeAmbient[] = {0.3F, 0.3F, 0.35F, 1.0F};
constexpr float kGlobeDiffuse[] = {1.0F, 1.0F, 1.0F, 1.0F};
constexpr float kGlobeSpecular[] = {0.2F, 0.2F, 0.2F, 1.0F};
constexpr GLint kGlobeShininess = 30;
constexpr float kTextureEnvironment[] = {1.0F, 1.0F, 1.0F, 1.0F};

constexpr float kNoSpecular[] = {0.0F, 0.0F, 0.0F, 1.0F};

/// Records a display list from the constructor to the destructor. The destructor also closes the
/// list when an exception ends the recording: otherwise OpenGL would add all later calls to the
/// open list.
class ListRecording {
public:
    explicit ListRecording(GLuint list) { glNewList(list, GL_COMPILE); }
    ListRecording(const ListRecording&) = delete;
    ListRecording& operator=(const ListRecording&) = delete;
    ~ListRecording() { glEndList(); }
};

void SetGlobeMaterial() {
    glMaterialfv(GL_FRONT, GL_AMBIENT, kGlobeAmbient);
    glMaterialfv(GL_FRONT, GL_DIFFUSE, kGlobeDiffuse);
    glMaterialfv(GL_FRONT, GL_SPECULAR, kGlobeSpecular);
    glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, kTextureEnvironment);
    glMateriali(GL_FRONT, GL_SHININESS, kGlobeShininess);
}

void ResetMaterial() {
    glMateriali(GL_FRONT, GL_SHININESS, 0);
    glMaterialfv(GL_FRONT, GL_SPECULAR, kNoSpecular);
}

}  // namespace

CPlanet::~CPlanet() {
    if (HasTexture()) {
        glDeleteTextures(kTileCount, textureNames);
        ForgetTextures();
    }
    if (cityListId != 0) glDeleteLists(cityListId, 1);
    cityListId = 0;
}

void CPlanet::Compile() {
    RecordAtmosphere();
    listId = ListName(this);
    {
        const ListRecording body(listId);
        // Deliberate: no glPushMatrix here, so the transform stays in force after this display
        // list. The display list of the cities is called next and needs the same transform.
        ApplyTransform();
        RenderBody();
    }
    cityListId = listId + 1;
    const ListRecording points(cityListId);
    RenderCities();
}

void CPlanet::Draw() {
    const bool separate = inputs_.extensions.hasSeparateSpecularColor;
    if (separate) glLightModeli(GL_LIGHT_MODEL_COLOR_CONTROL, GL_SEPARATE_SPECULAR_COLOR);
    if (listId != 0) {
        glCallList(listId);
    } else {
        RenderBody();
    }
    if (separate) glLightModeli(GL_LIGHT_MODEL_COLOR_CONTROL, GL_SINGLE_COLOR);
    if (cityListId != 0) {
        glCallList(cityListId);
    } else {
        RenderCities();
    }
}

void CPlanet::RenderBody() {
    PlaceSunLight();
    SetSunColours();
    RenderAtmosphere();
    // Deliberate: without textures (the map is not loaded) only one shell of the atmosphere is
    // drawn, and the surface is not drawn.
    if (HasTexture()) {
        SetGlobeMaterial();
        BuildMesh();
    }
    ResetMaterial();
}
