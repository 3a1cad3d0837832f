// Small helpers to build elements.

/** An element with properties (or attributes, where it has no such property) and children. */
export function make(tag, properties = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(properties)) {
    if (name in element) element[name] = value;
    else element.setAttribute(name, value);
  }
  element.append(...children);
  return element;
}

export const find = (selector) => document.querySelector(selector);

export const clamp = (value, least, most) => Math.min(Math.max(value, least), most);

/** Calls `moved(event)` while the pointer that pressed is down, then `ended(event)`. */
export function followPointer(element, press, moved, ended) {
  element.setPointerCapture(press.pointerId);
  const stop = new AbortController();
  const listen = (type, listener) =>
    element.addEventListener(type, listener, { signal: stop.signal });
  const end = (event) => {
    stop.abort();
    ended(event);
  };
  listen('pointermove', moved);
  listen('pointerup', end);
  listen('pointercancel', end);
}

/** How much an arrow key counts: Shift ten times, Alt a tenth. */
export const pace = (event) => (event.shiftKey ? 10 : event.altKey ? 0.1 : 1);

/** -1 or 1 for the arrow keys that take a value down or up, else 0. */
export function arrow(event) {
  if (event.ctrlKey || event.metaKey) return 0;
  return { ArrowUp: 1, ArrowRight: 1, ArrowDown: -1, ArrowLeft: -1 }[event.key] ?? 0;
}

/** True where typed letters and blanks belong to the element itself. */
export function takesText(element) {
  return element.matches('input:not([type=range], [type=checkbox], [type=color]), textarea, select');
}
