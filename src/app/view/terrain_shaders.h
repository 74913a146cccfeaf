#pragma once

namespace tessara {

/// GLSL 1.20 over OpenGL's fixed vertex attributes: position in tree units with the normalised height in y.
inline constexpr char kTerrainVertexShader[] = R"(#version 120
uniform vec3 toGround;      // tree units and normalised height to metres of true space
uniform vec3 groundOrigin;
varying vec3 ground;
varying vec2 detailPlace;

void main()
{
    ground = gl_Vertex.xyz * toGround + groundOrigin;
    detailPlace = (gl_TextureMatrix[1] * gl_MultiTexCoord1).st;
    gl_Position = ftransform();
    gl_ClipVertex = gl_ModelViewMatrix * gl_Vertex;
}
)";

/// Colours are decoded by squaring them and encoded by the square root, so that one in a light of 1 stays what it is.
inline constexpr char kTerrainFragmentShader[] = R"(#version 120
uniform sampler2D sourceMap;   // the terrain's own two textures, on the units where it binds them
uniform sampler2D detailMap;
uniform int hasSource;
uniform int hasDetail;
uniform float detailScale;
uniform vec3 sourceScale;      // ground x and z to the place in the source texture
uniform vec3 sourceOrigin;
uniform sampler2D lightMap;    // normal x and z, sunlight, skylight
uniform sampler2D waterMap;
uniform int hasWater;
uniform vec3 lightScale;       // ground x and z to the place in the light map
uniform vec3 lightOrigin;
uniform sampler2D heightMap;   // metres
uniform vec3 heightScale;      // ground x and z to the place in the height map
uniform vec3 heightOrigin;
uniform sampler2D rampMap;     // the 256 colours of water and the 256 of land, by height
uniform int hasColors;
uniform float landLow;         // height of the first one
uniform float landScale;       // metres to entries
uniform float waterLow;        // the same of the sea's, which come before them in the map
uniform float waterScale;
uniform vec3 plainColor;       // of ground without any
uniform vec3 eye;
uniform vec3 sunDirection;
uniform vec3 sunColor;
uniform vec3 skyColor;
uniform vec3 groundColor;
uniform vec3 hazeColor;
uniform float hazeStart;
uniform float hazeLength;
varying vec3 ground;
varying vec2 detailPlace;

// The height is the grid's, not the triangle's, and the entry the one that the surface itself takes.
vec3 Ramp(float entry, float first)
{
    return texture2D(rampMap, vec2((floor(clamp(entry, 0.0, 255.0) + 0.002) + first + 0.5) / 512.0, 0.5)).rgb;
}

// The colour of the ground, with the detail's departure from mid-grey.
vec3 GroundColor(float height)
{
    vec3 base = plainColor;
    if (hasColors != 0)
        base = Ramp((height - landLow) * landScale, 256.0);
    if (hasSource != 0) {
        vec3 source = texture2D(sourceMap, ground.xz * sourceScale.xz + sourceOrigin.xz).rgb;
        base = hasColors != 0 ? base * source : source;
    }
    if (hasDetail != 0)
        base = clamp((base + texture2D(detailMap, detailPlace).rgb - 0.5) * detailScale, 0.0, 1.0);
    return base;
}

// Leaves light up to one half as it is, and bends what is brighter towards 1, which it never reaches.
vec3 Encode(vec3 light)
{
    vec3 bright = max(light - 0.5, 0.0);
    return sqrt(min(light, 0.5) + 0.5 - 0.5 * exp(-2.0 * bright));
}

void main()
{
    vec2 place = ground.xz * lightScale.xz + lightOrigin.xz;
    vec4 texel = texture2D(lightMap, place);
    vec3 normal = vec3(texel.r * 2.0 - 1.0, 0.0, texel.g * 2.0 - 1.0);
    normal.y = sqrt(max(1.0 - dot(normal, normal), 0.0));
    vec3 toEye = eye - ground;
    float distance = length(toEye);
    toEye /= distance;

    float sun = max(dot(normal, sunDirection), 0.0) * texel.b;
    vec3 ambient = mix(groundColor, skyColor, 0.5 + 0.5 * normal.y) * texel.a;
    vec2 cell = ground.xz * heightScale.xz + heightOrigin.xz;
    float height = texture2D(heightMap, cell).r;
    vec3 base = GroundColor(height);
    vec3 lit = base * base * (sunColor * sun + ambient);
    if (hasWater != 0 && hasSource == 0) {
        float water = smoothstep(0.35, 0.65, texture2D(waterMap, cell).r);
        float grazing = pow(1.0 - max(toEye.y, 0.0), 4.0);
        vec3 mirrored = vec3(-toEye.x, toEye.y, -toEye.z);
        float glint = pow(max(dot(mirrored, sunDirection), 0.0), 60.0) * texel.b;
        vec3 depths = Ramp((height - waterLow) * waterScale, 0.0);
        // Over flat ground the light is 1; where the ground has a relief it shows.
        vec3 light = sunColor * sun + ambient;
        vec3 sea = mix(depths * depths * light, hazeColor, 0.5 * grazing) + sunColor * glint * 0.15;
        lit = mix(lit, sea, water);
    }
    float haze = 1.0 - exp(-max(distance - hazeStart, 0.0) / hazeLength);
    gl_FragColor = vec4(Encode(mix(lit, hazeColor, haze)), 1.0);
}
)";

}  // namespace tessara
