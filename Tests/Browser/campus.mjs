// A house of six rooms in a corner of a park.

const METRE = 0.000009;

export function campusBuilding() {
  const at = (east, north) => [20 + east * METRE, north * METRE];
  const feature = (type, coordinates, properties) => ({ type: 'Feature', properties, geometry: { type, coordinates } });
  const room = (east, number) => feature('Polygon', [[at(east, 0), at(east + 8, 0), at(east + 8, 10), at(east, 10), at(east, 0)]],
    { kind: 'room', level: 0, name: `Room ${number}` });
  return {
    type: 'FeatureCollection',
    name: 'Park',
    features: [
      ...[0, 1, 2, 3, 4, 5].map((number) => room(8 * number, number)),
      feature('Point', at(0, -5), { kind: 'node', id: 1, level: 0 }),
      feature('Point', at(900, 700), { kind: 'node', id: 2, level: 0 }),
      feature('LineString', [at(0, -5), at(900, 700)], { kind: 'edge', from: 1, to: 2 }),
    ],
  };
}
