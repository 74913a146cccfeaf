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
uniform sampler2D rampMap;     // the 256 colours of heights
uniform int hasColors;
uniform float rampLow;         // height of the first one
uniform float rampScale;       // metres to entries
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
vec3 HeightColor()
{
    float height = texture2D(heightMap, ground.xz * heightScale.xz + heightOrigin.xz).r;
    float entry = floor(clamp((height - rampLow) * rampScale, 0.0, 255.0) + 0.002);
    return texture2D(rampMap, vec2((entry + 0.5) / 256.0, 0.5)).rgb;
}

// The colour of the ground, with the detail's departure from mid-grey.
vec3 GroundColor()
{
    vec3 base = plainColor;
    if (hasColors != 0)
        base = HeightColor();
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
    vec3 base = GroundColor();
    vec3 lit = base * base * (sunColor * sun + ambient);
    if (hasWater != 0 && hasSource == 0) {
        float water = smoothstep(0.35, 0.65, texture2D(waterMap, place).r);
        float grazing = pow(1.0 - max(toEye.y, 0.0), 4.0);
        vec3 mirrored = vec3(-toEye.x, toEye.y, -toEye.z);
        float glint = pow(max(dot(mirrored, sunDirection), 0.0), 60.0) * texel.b;
        float offshore = texture2D(waterMap, place, 4.0).r;  // averaged over the neighbourhood: less near a shore
        vec3 depths = mix(vec3(0.02, 0.125, 0.18), vec3(0.008, 0.06, 0.125), smoothstep(0.45, 1.0, offshore));
        vec3 sea = mix(depths * (0.7 + texel.b), hazeColor, 0.03 + 0.7 * grazing) + sunColor * glint * 0.25;
        lit = mix(lit, sea, water);
    }
    float haze = 1.0 - exp(-max(distance - hazeStart, 0.0) / hazeLength);
    gl_FragColor = vec4(Encode(mix(lit, hazeColor, haze)), 1.0);
}
)";

}  // namespace tessara
