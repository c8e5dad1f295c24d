// Makes elements: element("p", { className: "note" }, "text", another).
function element(tag, properties = {}, ...children) {
    const made = Object.assign(document.createElement(tag), properties);
    made.append(...children);
    return made;
}

function byId(id) {
    return document.getElementById(id);
}
