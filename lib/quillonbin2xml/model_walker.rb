# frozen_string_literal: true

require "set"

# Converts everything an old model stores in one call: its render options, every host
# material that carries an old material record, and every light entity, in nested groups and
# component definitions too. Only calls the host offers are used: `attribute_dictionary(name,
# false)` and `[]`, `materials`, `entities`, `definition`, `name` and `entityID`.
module Quillonbin2xml
  DICTIONARY = "{DD17A615-9867-4806-8F46-B37031D7F153}"

  # The options document of a fresh load, taken before any model is read: the module keeps
  # the last model's options, so a model without a record must not show another model's.
  DEFAULT_OPTIONS = serialize_to_xml(nil)

  module ModelWalker
    module_function

    def convert(model)
      options = Quillonbin2xml.old_deserialize(model) ? Quillonbin2xml.serialize_to_xml(nil) : DEFAULT_OPTIONS
      { options: options, materials: materials_of(model), lights: lights_of(model) }
    end

    def materials_of(model)
      model.materials.each_with_object([]) do |material, out|
        data = stored(material)
        next unless data && !data["ombra_material"].nil?

        type = data["ombra_material_type"]
        name = data["ombra_material_name"] || material.name
        out << result({ name: name, type: type }) { Quillonbin2xml.convert_material(data["ombra_material"], type) }
      end
    end

    # Walks the model's entities, each group's and each component definition's once, with a
    # list of collections still to visit rather than recursion, however deep the nesting.
    def lights_of(model)
      lights = []
      pending = [model.entities]
      seen = Set.new.compare_by_identity
      until pending.empty?
        collection = pending.pop
        next unless seen.add?(collection)

        collection.each do |entity|
          light = light_of(entity)
          lights << light if light
          pending.push(*children_of(entity))
        end
      end
      lights
    end

    def light_of(entity)
      data = stored(entity)
      return nil unless data && !data["light_data"].nil?

      type = data["light_type"]
      result({ entity: entity.entityID, type: type }) { Quillonbin2xml.convert_light(data["light_data"], type) }
    end

    # A group holds its entities; a component instance reaches them through its definition.
    def children_of(entity)
      holder = entity.respond_to?(:definition) ? entity.definition : entity
      holder.respond_to?(:entities) ? [holder.entities] : []
    end

    def stored(holder)
      return nil unless holder.respond_to?(:attribute_dictionary)

      holder.attribute_dictionary(DICTIONARY, false)
    end

    # The record's entry: its XML, or nil and why it was refused.
    def result(entry)
      xml = yield
      xml ? entry.merge(xml: xml) : entry.merge(xml: nil, error: "the record was refused")
    rescue TypeError, RangeError => e
      entry.merge(xml: nil, error: e.message)
    end
  end

  # { options: String, materials: [{name:, type:, xml:}], lights: [{entity:, type:, xml:}] };
  # a refused record has `xml: nil` and `error:`.
  def self.convert_model(model) = ModelWalker.convert(model)
end
