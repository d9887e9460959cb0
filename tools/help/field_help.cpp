#include "tools/help/field_help.h"

#include <array>

namespace lorivan {
namespace {

// clang-format off
constexpr auto kFields = std::to_array<FieldHelp>({
    {"shape", "vtXNo", "How many cells the shape has across. Round shapes count the cells around their centre: "
     "“Circular” has twice as many sectors as columns.", "2 4 7"},
    {"shape", "vtYNo", "How many cells the shape has from top to bottom, or how many rings a round one has. "
     "“Triangle” and the diamonds have never more rows than columns; in “Cross” the rows are the width of the arms.", "1 3 5"},
    {"shape", "vtCrossOffset", "Only “Cross” and “Spiral” show this field. It moves the level arm of the cross "
     "up or down by whole cells, or makes the spiral longer or shorter by single points. Its label reads CO for the cross "
     "and SO for the spiral.", "-2 0 2"},
    {"shape", "chkMirror", "Swaps over and under at every crossing, in 2D, in 3D and in every file.", "0 1"},
    {"shape", "chkWrap", "Joins the left and the right border: the strands run on across the seam, and the model is "
     "a ring that is interlaced all round, whatever Ring % said before. The picture shows it cut off at the seam, "
     "with ends that match, so pictures side by side go on and on. Square-Square, Square-Triangle (with an even number of columns), "
     "Triangle, which becomes a straight band, and both honeycombs can be wrapped; AutoGrids and shapes of your "
     "own cannot. Walls stay where there is still a line for them.", "0 1"},
    {"shape", "vtGridSize", "For custom shapes: how many cells the AutoGrid lays across the outline, and how "
     "many lines the alignment grid has. Larger numbers make a finer knot.", "6 10 16"},
    {"shape", "chkShapeT", "Lays an AutoGrid of triangles. Without it the AutoGrid has square cells.", "0 1"},

    {"2d", "vtWidth", "Half the width of the bands, in pixels of a picture 500 pixels wide. It grows with "
     "the picture: a picture twice as large shows the same knot, sharper.", "4 9 14"},
    {"2d", "vtEdge", "Width of the black edge on each side of a band. However wide the edge, a thin line of "
     "colour always stays.", "1 3 6"},
    {"2d", "vtScale", "Size of one cell. A shape that would not fit is built smaller, and the field shows the "
     "scale that was used; the next grid that has room gets the scale you asked for. Breaks and "
     "walls stay with their cells.", "20 30 38"},
    {"2d", "vtSwish", "How far the strands swing out when they go round a corner: low values stay flat and "
     "boxy, high ones make loops and points.", "3 12 24"},
    {"2d", "vtSmooth", "The order of the curve. 2 goes straight from corner to corner, 3 and 4 are round, 5 and "
     "6 are so soft that corners shrink.", "2 3 5"},
    {"2d", "vtSkew", "Makes the knot taller (above 1) or flatter (below 1). With 1 a square cell is square and "
     "a circle round.", "0.7 1 1.6"},
    {"2d", "vtStartColour", "Which of the fifteen colours the first strand takes; the next strands take the "
     "colours after it. A negative number gives all strands the same colour.", "1 4 -2"},
    {"2d", "vtPicKnotBackColour", "Which colour box the background takes. Click a colour box to choose its "
     "colour.", "15 3 14"},
    {"2d", "chkClassic", "Paints crossings as earlier versions did: the upper band is laid once more on the lower one. "
     "Without it every band is painted only where it can be seen, which is cleaner and gives closed outlines."},
    {"2d", "chkShowGrid", "Shows the grid behind the knot, on the screen and in pictures that you save.", "0 1"},
    {"2d", "chkShowCrossings", "Marks on every line of the grid the place where strands cross, wherever "
     "the grid is shown."},

    {"2d", "chkFitBands", "Makes the bands as wide as the grid has room for, and again whenever that room changes, as with "
     "another grid, walls, Smooth or Swish, until you type a width or an edge. Random, the styles and AutoGrid check it.", "0 1"},

    {"random", "chkConstantShape", "With this box checked the Random button keeps your shape and draws only the "
     "other values."},

    {"animation", "chkAnimate", "Create 2D then draws the knot stroke by stroke. While it runs, the button "
     "reads “Stop”."},
    {"animation", "chkLoop", "Starts the drawing again when it is done, until you press Stop."},
    {"animation", "vtAnimate", "Speed of the drawing, from 1 to 9. 9 is the fastest."},

    {"3d", "vtPolySides", "How many sides the tube has when it is cut across. 3 and 4 look carved, 12 and more "
     "look round. For printing, 16 is plenty.", "3 5 12"},
    {"3d", "vtPolyPoints", "How many slices the tube has between two points of the strand. More slices make "
     "smoother curves and larger files.", "1 4 8"},
    {"3d", "vtPolyRadius", "Thickness of the tube. Thick tubes touch or run into each other where they cross: "
     "good for casting in one piece, wrong for links that must move.", "2 5 9"},
    {"3d", "vtPolySmooth", "How softly the tube rises and falls at the crossings and turns its corners.", "3 4 8"},
    {"3d", "vtPolyZF", "How high a strand rises at a crossing where it lies over, and how deep it sinks where "
     "it lies under. Low values give a flat relief.", "0.5 2 4"},
    {"3d", "vtRingPerc", "Bends the knot round: 0 leaves it flat, 75 makes an open bracelet, 100 closes it to a "
     "ring.", "0 75 100"},
    {"3d", "chkHeightMap", "Paints the model in grey levels, the highest places lightest: a height map for "
     "engravers, embossers and relief carving. The window saves it at twice the size that is shown.", "0 1"},

    {"view", "vtTheta", "Turns the model round its upright axis, in degrees.", "0 30 60"},
    {"view", "vtPhi", "Tilts it towards you or away, in degrees.", "0 30 60"},
    {"view", "vtPsi", "Rolls it in the plane of the picture, in degrees.", "0 30 60"},
    {"view", "chkSmooth", "Shades the model as the round tubes that it stands for, as bright with many sides as with few. "
     "Without it every face is painted by itself, and small faces are darker than large ones.", "0 1"},
    {"view", "vtKa", "Light that comes from everywhere. More of it makes the shadows lighter.", "0 0.3 1"},
    {"view", "vtKd", "Light that falls on the surface from the lamp: it shapes the tubes."},
    {"view", "vtKs", "Strength of the highlights. 0 looks like clay, 1 like polished metal."},
    {"view", "vtNFact", "Size of the highlights: the higher the number, the smaller and sharper they are."},
    {"view", "vtKDist", "How far away the lamp is. Numbers nearer to zero bring it closer."},

    {"dxf", "chkDXF2D", "Writes a DXF file as flat lines for cutting machines. Without it a DXF file holds the "
     "3D model."},
    {"dxf", "chkFullyCrossed", "Lets the lines of a flat DXF file run through under the crossings, each strand "
     "in one piece. Without it a strand that goes under another stops at its edge."},
});

constexpr auto kFormats = std::to_array<FormatHelp>({
    {"qzd", "Lorivan", "The knot itself: shape, bands, colours, 3D values, your own outline, and every line of "
     "its grid with its breaks and walls. Keep this file if you want to change the knot later."},
    {"svg", "Inkscape, laser and vinyl software, browsers", "Real curves in millimetres. The layer "
     "<code>strands</code> holds a group for each strand, with a closed outline for each stretch that can be "
     "seen; the layer <code>edges</code> beneath holds the black edges. A strand's colour is one class of the style "
     "sheet."},
    {"pdf", "Printers, engravers, laser and vinyl software", "A page of the real size with the same curves and "
     "layers."},
    {"png", "Anything that shows pictures", "The picture on the screen at any size. On the command line "
     "<code>--transparent</code> leaves the background out."},
    {"bmp", "Older picture programs, engravers that want a height map", "The same picture, without "
     "compression."},
    {"emf", "Office and drawing programs on Windows", "Vector paths that can be taken apart and coloured "
     "anew. The grid is never in it."},
    {"pov", "POV-Ray", "A scene for photographic pictures. The strands are smooth blobs, so no polygon shows."},
    {"wrl", "VRML and X3D viewers", "A world in which the knot turns. Click stops it; drag turns it by hand."},
    {"obj", "Blender, 3D programs",
     "The closed mesh, one group for each strand. For modelling, <code>--weld</code> shares the corners of the "
     "polygons and adds the colours in a file <code>.mtl</code>. For printing take 3MF or STL."},
    {"stl", "Slicers for 3D printers, casting services",
     "The closed mesh as triangles; with <code>--binary</code> in a third of the size, with "
     "<code>--relief</code> as a relief on a plate."},
    {"3mf", "Slicers for 3D printers",
     "The closed mesh in millimetres, an object in its colour for each strand, with a small picture; with "
     "<code>--relief</code> as a relief on a plate."},
    {"glb", "Viewers, browsers, Blender, games", "The closed mesh in metres, upright, with a material for each strand."},
    {"xyz", "Point cloud programs", "The points of the model, one on each line."},
    {"gmv", "Jewellery design software", "Rings of four points along every strand."},
    {"dxf", "CAD, CNC routers, laser cutters", "Flat lines for cutting, or the model's faces: the box “2D DXF” "
     "decides. <code>--outline</code> writes the bands' outlines."},
});
// clang-format on

}  // namespace

std::span<const FieldHelp> fieldHelp() { return kFields; }
std::span<const FormatHelp> formatHelp() { return kFormats; }

}  // namespace lorivan
