#include <cstdio>

#include "Engine/File/NativePath.h"
#include "Engine/Render/Mesh/MeshData.h"

int main(int, char** arguments) {
    Corvid::FileArchiveSystem archives;
    Corvid::MeshData mesh;
    const bool isLoaded =
        mesh.LoadFromFile(archives, Corvid::PathFromNative(arguments[1])) == Corvid::LoadResult::Loaded;
    std::printf("%d\n", mesh.m_Vertices.GetSize());
    return isLoaded ? 0 : 1;
}
