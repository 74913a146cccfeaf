#include "app/viewer/terrain/triangle_export.h"

#include "app/output/frame_dump.h"
#include "app/output/ground_mesh.h"
#include "app/output/mesh_file.h"
#include "app/output/output_check.h"
#include "app/viewer/terrain/terrain_document.h"
#include "host/camera.h"
#include "host/kvo_host.h"

namespace tessara {

namespace {

/// The same view in the space of another terrain. \param lift height of that space's zero in the camera's own
void CopyView(Camera& from, Camera& to, const GroundFrame& ground, double lift)
{
    TerrainFrustum* frustum = nullptr;
    from.GetFrustum(&frustum);
    to.SetDrawUnits(ground.DrawUnits());
    to.SetViewport(from.Width(), from.Height());
    to.SetLens(static_cast<double>(frustum->FieldOfView), static_cast<double>(frustum->Near),
               static_cast<double>(frustum->Far));
    to.SetUp(from.Up());
    to.SetDirection(from.Forward());
    to.SetPosition(from.Position() - Vector3{0.0, lift, 0.0});
}

}  // namespace

std::uint64_t ExportTriangles(const TerrainDocument& document, const std::string& path, Camera& camera,
                              double levelOfDetail)
{
    const MeshFormat format = MeshFormatOf(path);
    CheckedOutput(path, {document.Path()}, {".txt", ".obj", ".ply", ".stl"});
    const auto host = MakeObject<KvoHost>(nullptr, nullptr);
    const double exaggeration = document.Session().Ground().Exaggeration();
    TerrainSession terrain(document.Data(), {exaggeration, levelOfDetail}, ComPtr<IKvoHost>(host.Get()));
    // This terrain's lowest point is the zero of its heights, not the floor.
    const auto eye = MakeObject<Camera>();
    CopyView(camera, *eye, terrain.Ground(),
             document.Session().Ground().FromMap(0.0, 0.0, static_cast<double>(document.Data().minimum)).y);
    if (format == MeshFormat::Text) {
        const PolygonText polygons = DumpFrame(terrain, *eye, 0, FrameExtent::Seen);
        WritePolygons(polygons, path);
        return polygons.Triangles();
    }
    const TriangleMesh mesh = MakeGroundMesh(DumpFrame(terrain, *eye, 0, FrameExtent::Whole), document.Data());
    WriteMesh(mesh, path, format, kGroundUnits);
    return mesh.triangles.size();
}

}  // namespace tessara
