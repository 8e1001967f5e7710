// Stairs from a spot on level 0 up to a passage on level 1, and others to level 2.

const METRE = 0.000009;
/** Number, level, and metres to the east and north. */
const NODES = [[1, 0, 0, 0], [2, 1, 6, 0], [3, 1, 20, 0], [4, 2, 26, 0], [5, 2, 40, 5], [6, 0, 30, 20]];
const EDGES = [[1, 2, 'stairs'], [2, 3], [3, 4, 'stairs'], [4, 5], [1, 6]];

const at = (east, north) => [20 + east * METRE, north * METRE];

function point(level, east, north, properties) {
  return { type: 'Feature', properties: { level, ...properties }, geometry: { type: 'Point', coordinates: at(east, north) } };
}

function edge(from, to, type) {
  const coordinates = [from, to].map((id) => NODES.find(([each]) => each === id)).map(([, , east, north]) => at(east, north));
  return { type: 'Feature', properties: { kind: 'edge', from, to, type }, geometry: { type: 'LineString', coordinates } };
}

export function upstairsBuilding() {
  return {
    type: 'FeatureCollection',
    name: 'House',
    features: [
      ...NODES.map(([id, level, east, north]) => point(level, east, north, { kind: 'node', id })),
      ...EDGES.map((each) => edge(...each)),
      point(0, 0, 0, { kind: 'place', name: 'Foot of the stairs' }),
      point(2, 40, 5, { kind: 'place', name: 'Attic' }),
    ],
  };
}
