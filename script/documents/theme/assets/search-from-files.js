// SPDX-License-Identifier: MIT
/*
 * Search in pages that were opened as files. Browsers give such pages neither requests nor workers: the index comes as a
 * script (search_from_files.py makes it), and the worker runs in a frame of this page.
 */
"use strict";

if (location.protocol === "file:") {
    const source = document.currentScript.dataset.index;
    window.__search = {
        index: new Promise((found) => {
            window.rmonSearchIndex = found;
        }),
    };
    document.head.append(Object.assign(document.createElement("script"), { src: source }));

    window.Worker = class extends EventTarget {
        constructor(url) {
            super();
            this.onmessage = null;
            const frame = document.createElement("iframe");
            frame.hidden = true;
            frame.title = "search";
            this.inside = new Promise((ready) => {
                document.addEventListener("DOMContentLoaded", () => document.body.append(frame));
                if (document.readyState !== "loading") {
                    document.body.append(frame);
                }
                const wait = setInterval(() => {
                    const inside = frame.contentWindow;
                    if (!inside) {
                        return;
                    }
                    clearInterval(wait);
                    // What a worker says goes to this page; what this page says arrives as an event there.
                    inside.postMessage = (data) => this.dispatch(data);
                    const script = inside.document.createElement("script");
                    script.src = new URL(url, location.href).href;
                    script.onload = () => ready(inside);
                    inside.document.body.append(script);
                }, 5);
            });
        }

        dispatch(data) {
            const event = new MessageEvent("message", { data });
            this.dispatchEvent(event);
            if (this.onmessage) {
                this.onmessage(event);
            }
        }

        postMessage(data) {
            this.inside.then((inside) => inside.dispatchEvent(new inside.MessageEvent("message", { data })));
        }

        terminate() {}
    };
}
